#pragma once

#include "viewer/TreatmentRecord.h"

#include <QDialog>

class QCheckBox;
class QDateEdit;
class QLineEdit;
class QPushButton;

namespace viewer {

/// Asks for the name, the number and the date of birth of a patient; only the name is needed.
class NewPatientDialog : public QDialog
{
    Q_OBJECT

public:
    explicit NewPatientDialog(QWidget *parent = nullptr);

    PatientRecord patient() const;

private:
    QLineEdit *name_;
    QLineEdit *identifier_;
    QCheckBox *knowsBirthDate_;
    QDateEdit *birthDate_;
};

} // namespace viewer
