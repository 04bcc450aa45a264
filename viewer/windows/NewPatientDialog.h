#pragma once

#include "viewer/store/TreatmentRecord.h"

#include <QDialog>
#include <QStringList>

class QCheckBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QPushButton;

namespace viewer {

/// Asks for the name, the number and the date of birth of a patient. Only the name is needed; a
/// number that another patient has is not taken, and the dialog says so.
class NewPatientDialog : public QDialog
{
    Q_OBJECT

public:
    /// With the numbers that are taken.
    explicit NewPatientDialog(QStringList identifiers, QWidget *parent = nullptr);

    PatientRecord patient() const;

private:
    void check();

    QStringList identifiers_;
    QLineEdit *name_;
    QLineEdit *identifier_;
    QCheckBox *knowsBirthDate_;
    QDateEdit *birthDate_;
    QLabel *reason_;
    QPushButton *accept_;
};

} // namespace viewer
