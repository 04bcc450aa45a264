#include "viewer/windows/PatientsDialog.h"

#include "viewer/store/DatabaseAdvice.h"
#include "viewer/text/DateText.h"
#include "viewer/windows/NewPatientDialog.h"
#include "viewer/windows/PlainBox.h"
#include "viewer/windows/SearchableTable.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

namespace viewer {
namespace {

constexpr int treatmentRole = Qt::UserRole;
constexpr int sortRole = Qt::UserRole + 1;

QString dateText(const std::optional<QDate> &date)
{
    return date ? shortDate(*date) : QString();
}

QStandardItem *dateItem(const std::optional<QDate> &date)
{
    auto *item = new QStandardItem(dateText(date));
    item->setData(date.value_or(QDate()), sortRole);
    return item;
}

QStandardItem *textItem(const QString &text)
{
    auto *item = new QStandardItem(text);
    item->setData(text, sortRole);
    return item;
}

} // namespace

PatientsDialog::PatientsDialog(TreatmentStore &store, QWidget *parent)
    : QDialog(parent),
      store_(store),
      model_(new QStandardItemModel(this)),
      list_(new SearchableTable(*model_, tr("Patients"), tr("Search the patients")))
{
    setWindowTitle(tr("Patients"));
    list_->rows().setSortRole(sortRole);
    list_->rows().setSortLocaleAware(true);
    list_->table().setSelectionMode(QAbstractItemView::SingleSelection);
    list_->table().setSortingEnabled(true);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    open_ = buttons->addButton(tr("&Open"), QDialogButtonBox::AcceptRole);
    auto *newPatient = buttons->addButton(tr("&New Patient…"), QDialogButtonBox::ActionRole);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(list_);
    layout->addWidget(buttons);
    // Return opens the first one that fits.
    connect(&list_->search(), &QLineEdit::textChanged, this,
            [this] { list_->table().selectRow(0); });
    connect(newPatient, &QPushButton::clicked, this, &PatientsDialog::addPatient);
    connect(buttons, &QDialogButtonBox::accepted, this, &PatientsDialog::acceptChosen);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(&list_->table(), &QTableView::doubleClicked, this, &PatientsDialog::acceptChosen);
    connect(list_->table().selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { open_->setEnabled(chosen().has_value()); });
    fill();
    resize(640, 420);
    list_->setFocus();
}

void PatientsDialog::fill()
{
    model_->clear();
    model_->setHorizontalHeaderLabels(
        {tr("Name"), tr("Number"), tr("Born"), tr("Notes"), tr("Last note")});
    const auto all = store_.allTreatments();
    if (!all) {
        list_->search().setEnabled(false);
        list_->search().setPlaceholderText(all.sentence());
    } else {
        for (const TreatmentSummary &summary : all.value()) {
            const PatientRecord &patient = summary.patient.patient;
            auto *notes = new QStandardItem(QLocale().toString(summary.noteCount));
            notes->setData(summary.noteCount, sortRole);
            auto *name = textItem(patient.name);
            name->setData(summary.treatment.treatmentID, treatmentRole);
            model_->appendRow({name, textItem(patient.identifier), dateItem(patient.birthDate),
                               notes, dateItem(summary.lastNoteDate)});
        }
    }
    list_->table().sortByColumn(0, Qt::AscendingOrder);
    list_->table().resizeColumnsToContents();
    list_->table().selectRow(0);
    open_->setEnabled(chosen().has_value());
}

std::optional<qint64> PatientsDialog::chosen() const
{
    const QModelIndexList rows = list_->table().selectionModel()->selectedRows();
    if (rows.isEmpty()) return std::nullopt;
    return rows.front().data(treatmentRole).toLongLong();
}

void PatientsDialog::acceptChosen()
{
    treatment_ = chosen();
    if (treatment_) accept();
}

void PatientsDialog::addPatient()
{
    QStringList identifiers;
    if (const auto patients = store_.patients()) {
        for (const StoredPatient &one : patients.value())
            identifiers << one.patient.identifier;
    }
    NewPatientDialog dialog(identifiers, this);
    if (dialog.exec() != QDialog::Accepted) return;
    TreatmentRecord record;
    record.patient = dialog.patient();
    const auto added = store_.addTreatment(record);
    if (!added) {
        warn(this, windowTitle(), added.sentence(), adviceOn(added.failure().problem));
        return;
    }
    treatment_ = added.value();
    accept();
}

} // namespace viewer
