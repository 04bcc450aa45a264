#include "viewer/windows/NewPatientDialog.h"

#include "viewer/files/Limits.h"
#include "viewer/text/DateText.h"

#include <QCheckBox>
#include <QDate>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>

#include <utility>

namespace viewer {
namespace {

/// Where the calendar of births opens: many patients are about that old.
constexpr int usualAge = 12;

} // namespace

NewPatientDialog::NewPatientDialog(QStringList identifiers, QWidget *parent)
    : QDialog(parent),
      identifiers_(std::move(identifiers)),
      name_(new QLineEdit),
      identifier_(new QLineEdit),
      knowsBirthDate_(new QCheckBox(tr("&Born:"))),
      birthDate_(new QDateEdit),
      reason_(new QLabel)
{
    setWindowTitle(tr("New Patient"));
    birthDate_->setDate(QDate::currentDate().addYears(-usualAge));
    birthDate_->setMaximumDate(QDate::currentDate());
    birthDate_->setDisplayFormat(shortDateFormat());
    birthDate_->setCalendarPopup(true);
    birthDate_->setEnabled(false);
    birthDate_->setAccessibleName(tr("Date of birth"));
    name_->setMinimumWidth(260);
    // What is longer could be exported, and not be read again.
    for (QLineEdit *text : {name_, identifier_})
        text->setMaxLength(static_cast<int>(longestText));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    accept_ = buttons->button(QDialogButtonBox::Ok);
    auto *layout = new QFormLayout(this);
    layout->addRow(tr("&Name:"), name_);
    layout->addRow(tr("N&umber:"), identifier_);
    layout->addRow(knowsBirthDate_, birthDate_);
    layout->addRow(reason_);
    layout->addRow(buttons);
    connect(name_, &QLineEdit::textChanged, this, &NewPatientDialog::check);
    connect(identifier_, &QLineEdit::textChanged, this, &NewPatientDialog::check);
    connect(knowsBirthDate_, &QCheckBox::toggled, birthDate_, &QWidget::setEnabled);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    check();
}

void NewPatientDialog::check()
{
    const QString identifier = identifier_->text().trimmed();
    const bool isTaken =
        !identifier.isEmpty() && identifiers_.contains(identifier, Qt::CaseInsensitive);
    reason_->setText(isTaken ? tr("Another patient has this number already.") : QString());
    accept_->setEnabled(!name_->text().trimmed().isEmpty() && !isTaken);
}

PatientRecord NewPatientDialog::patient() const
{
    PatientRecord record;
    record.name = name_->text().trimmed();
    record.identifier = identifier_->text().trimmed();
    if (knowsBirthDate_->isChecked()) record.birthDate = birthDate_->date();
    return record;
}

} // namespace viewer
