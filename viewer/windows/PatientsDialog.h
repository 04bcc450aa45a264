#pragma once

#include "viewer/store/TreatmentStore.h"

#include <QDialog>

#include <optional>

class QPushButton;
class QStandardItemModel;

namespace viewer {

class SearchableTable;

/// The treatments of a database as a list that can be searched: one is chosen, or a new patient is
/// added.
class PatientsDialog : public QDialog
{
    Q_OBJECT

public:
    /// The store is not owned. What it cannot tell is said in place of the list.
    explicit PatientsDialog(TreatmentStore &store, QWidget *parent = nullptr);

    /// What was chosen; nothing before the dialog is accepted.
    std::optional<qint64> treatment() const { return treatment_; }

private:
    void fill();
    void acceptChosen();
    void addPatient();
    std::optional<qint64> chosen() const;

    TreatmentStore &store_;
    std::optional<qint64> treatment_;
    QStandardItemModel *model_;
    SearchableTable *list_;
    QPushButton *open_;
};

} // namespace viewer
