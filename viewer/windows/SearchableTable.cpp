#include "viewer/windows/SearchableTable.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QVBoxLayout>

namespace viewer {

SearchableTable::SearchableTable(QAbstractItemModel &model, const QString &tableName,
                                 const QString &searchName, QWidget *parent)
    : QWidget(parent),
      search_(new QLineEdit),
      table_(new QTableView),
      rows_(new QSortFilterProxyModel(this))
{
    rows_->setSourceModel(&model);
    rows_->setFilterKeyColumn(-1); // all of them
    rows_->setFilterCaseSensitivity(Qt::CaseInsensitive);
    search_->setPlaceholderText(tr("Search"));
    search_->setAccessibleName(searchName);
    search_->setClearButtonEnabled(true);
    connect(search_, &QLineEdit::textChanged, rows_, &QSortFilterProxyModel::setFilterFixedString);
    table_->setModel(rows_);
    table_->setAccessibleName(tableName);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setAlternatingRowColors(true);
    table_->setTabKeyNavigation(false); // the key leads on to the buttons
    table_->verticalHeader()->hide();
    table_->horizontalHeader()->setStretchLastSection(true);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(search_);
    layout->addWidget(table_);
    setFocusProxy(search_);
}

} // namespace viewer
