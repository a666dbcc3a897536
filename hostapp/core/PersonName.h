#pragma once

#include <QtCore/QString>

/// Who writes notes at this machine: the name given last, else the one the system knows the user by. Main thread only.
namespace plotix {

QString personName();  ///< may be empty
void setPersonName(const QString& name);

/// The full name in an account's comment field, whose parts are separated by commas; an ampersand in it stands for the
/// account's name. The account's name where there is none.
QString fullNameOf(const QString& comment, const QString& account);

}  // namespace plotix
