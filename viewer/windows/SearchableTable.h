#pragma once

#include <QWidget>

class QAbstractItemModel;
class QLineEdit;
class QSortFilterProxyModel;
class QTableView;

namespace viewer {

/// A table of texts with a field above it: only the rows that hold what is typed there are shown.
class SearchableTable : public QWidget
{
    Q_OBJECT

public:
    /// Shows the model, which is not owned. The names are for screen readers.
    SearchableTable(QAbstractItemModel &model, const QString &tableName, const QString &searchName,
                    QWidget *parent = nullptr);

    QTableView &table() const { return *table_; }
    QLineEdit &search() const { return *search_; }
    /// Between the model and the table; rows are sorted by it.
    QSortFilterProxyModel &rows() const { return *rows_; }

private:
    QLineEdit *search_;
    QTableView *table_;
    QSortFilterProxyModel *rows_;
};

} // namespace viewer
