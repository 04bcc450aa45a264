#include "viewer/PatientsDialog.h"

#include "viewer/NewPatientDialog.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QLocale>
#include <QMessageBox>
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
    return date ? QLocale().toString(*date, QLocale::ShortFormat) : QString();
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
      filtered_(new QSortFilterProxyModel(this)),
      search_(new QLineEdit),
      table_(new QTableView)
{
    setWindowTitle(tr("Patients"));
    filtered_->setSourceModel(model_);
    filtered_->setFilterKeyColumn(-1); // all of them
    filtered_->setFilterCaseSensitivity(Qt::CaseInsensitive);
    filtered_->setSortRole(sortRole);
    filtered_->setSortLocaleAware(true);
    search_->setPlaceholderText(tr("Search"));
    search_->setAccessibleName(tr("Search the patients"));
    search_->setClearButtonEnabled(true);
    table_->setModel(filtered_);
    table_->setAccessibleName(tr("Patients"));
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setAlternatingRowColors(true);
    table_->setSortingEnabled(true);
    table_->setTabKeyNavigation(false);
    table_->verticalHeader()->hide();
    table_->horizontalHeader()->setStretchLastSection(true);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    open_ = buttons->addButton(tr("&Open"), QDialogButtonBox::AcceptRole);
    auto *newPatient = buttons->addButton(tr("&New Patient…"), QDialogButtonBox::ActionRole);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(search_);
    layout->addWidget(table_);
    layout->addWidget(buttons);
    connect(search_, &QLineEdit::textChanged, this, [this](const QString &text) {
        filtered_->setFilterFixedString(text);
        table_->selectRow(0); // Return opens the first one that fits
    });
    connect(newPatient, &QPushButton::clicked, this, &PatientsDialog::addPatient);
    connect(buttons, &QDialogButtonBox::accepted, this, &PatientsDialog::acceptChosen);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(table_, &QTableView::doubleClicked, this, &PatientsDialog::acceptChosen);
    connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { open_->setEnabled(chosen().has_value()); });
    fill();
    resize(640, 420);
    search_->setFocus();
}

void PatientsDialog::fill()
{
    model_->clear();
    model_->setHorizontalHeaderLabels(
        {tr("Name"), tr("Number"), tr("Born"), tr("Notes"), tr("Last note")});
    const auto all = store_.allTreatments();
    if (!all) {
        search_->setEnabled(false);
        search_->setPlaceholderText(all.sentence());
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
    table_->sortByColumn(0, Qt::AscendingOrder);
    table_->resizeColumnsToContents();
    table_->selectRow(0);
    open_->setEnabled(chosen().has_value());
}

std::optional<qint64> PatientsDialog::chosen() const
{
    const QModelIndexList rows = table_->selectionModel()->selectedRows();
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
    NewPatientDialog dialog(this);
    if (dialog.exec() != QDialog::Accepted) return;
    TreatmentRecord record;
    record.patient = dialog.patient();
    const auto added = store_.addTreatment(record);
    if (!added) {
        QMessageBox::warning(this, windowTitle(), added.sentence());
        return;
    }
    treatment_ = added.value();
    accept();
}

} // namespace viewer
