#pragma once

#include "hostapp/core/PropertyFormula.h"

#include <QtCore/QStringList>
#include <QtWidgets/QDialog>

class QRadioButton;

/// Asks what stands for properties of another source between their records, when they come into a trend: the last
/// value, which invents none, unless another answer is given. The formula's dialog changes it later.
///
/// It stores nothing: the caller does. Main thread only.
namespace plotix {

class JoinDialog : public QDialog {
    Q_OBJECT
public:
    /// `names`: of the properties that are made. Requires: there is one.
    explicit JoinDialog(const QStringList& names, QWidget* parent = nullptr);

    PropertyFormula::Join join() const;

private:
    QRadioButton* m_hold;  // owned by the dialog, as the other
    QRadioButton* m_straight;
};

}  // namespace plotix
