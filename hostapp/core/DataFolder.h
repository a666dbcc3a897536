#pragma once

#include <QtCore/QString>

namespace plotix {

/// Where the program keeps what it makes for the user by itself: PLOTIX_DATA_HOME if set, else the user's data folder.
/// It may not be there yet. Any thread.
QString dataFolder();

}  // namespace plotix
