#include "viewer/ElasticNameSheet.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace viewer {

ElasticNameSheet::ElasticNameSheet(const QString &question, const QString &presentName,
                                   std::function<QString(const QString &)> problem, QWidget *parent)
    : QDialog(parent, Qt::Sheet),
      problem_(std::move(problem)),
      name_(new QLineEdit(presentName)),
      reason_(new QLabel)
{
    setWindowTitle(tr("Name Elastic"));
    setWindowModality(Qt::WindowModal);
    auto *label = new QLabel(question);
    label->setBuddy(name_);
    name_->setAccessibleName(tr("Name of the elastic"));
    name_->setMinimumWidth(320);
    name_->selectAll();
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    accept_ = buttons->button(QDialogButtonBox::Ok);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(name_);
    layout->addWidget(reason_);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(name_, &QLineEdit::textChanged, this, &ElasticNameSheet::check);
    check();
}

QString ElasticNameSheet::name() const
{
    return name_->text();
}

void ElasticNameSheet::check()
{
    const QString reason = problem_(name_->text());
    reason_->setText(name_->text().isEmpty() ? QString() : reason);
    accept_->setEnabled(reason.isEmpty());
}

} // namespace viewer
