#include "viewer/windows/ElasticNameController.h"

#include "keloModel/Catalogue.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <utility>

namespace viewer {

ElasticNameController::ElasticNameController() : SheetController(name) {}

void ElasticNameController::awakeFromNib()
{
    SheetController::awakeFromNib();
    QWidget *const sheet = window();
    label_ = sheet->findChild<QLabel *>(QStringLiteral("question"));
    name_ = sheet->findChild<QLineEdit *>(QStringLiteral("name"));
    reason_ = sheet->findChild<QLabel *>(QStringLiteral("reason"));
    auto *buttons = sheet->findChild<QDialogButtonBox *>(QStringLiteral("buttons"));
    auto *dialog = qobject_cast<QDialog *>(sheet);
    kelo::assertThat(label_ && name_ && reason_ && buttons && dialog,
                     "The interface file ElasticName lacks a part of its sheet");
    // A name that is longer could be exported, and not be read again.
    name_->setMaxLength(static_cast<int>(kelo::longestCatalogueText));
    accept_ = buttons->button(QDialogButtonBox::Ok);
    connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    connect(dialog, &QDialog::finished, this, [this](int result) {
        const QString given = name_->text();
        doneDialog();
        if (result == QDialog::Accepted) question_.answered(given);
    });
    connect(name_, &QLineEdit::textChanged, this, &ElasticNameController::check);
}

void ElasticNameController::ask(Question question)
{
    window(); // loads it
    question_ = std::move(question);
    window()->setWindowTitle(question_.title);
    label_->setText(question_.text);
    name_->setText(question_.presentName);
    name_->selectAll();
    check();
    name_->setFocus();
    startDialog();
}

void ElasticNameController::check()
{
    const QString reason = question_.problem(name_->text());
    reason_->setText(name_->text().isEmpty() ? QString() : reason);
    accept_->setEnabled(reason.isEmpty());
}

} // namespace viewer
