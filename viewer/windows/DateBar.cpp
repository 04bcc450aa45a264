#include "viewer/windows/DateBar.h"

#include "viewer/text/DateText.h"

#include <QHBoxLayout>
#include <QLocale>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTabBar>

#include <algorithm>

namespace viewer {

DateBar::DateBar(QWidget *parent) : QWidget(parent), tabs_(new QTabBar), approval_(new QPushButton)
{
    tabs_->setShape(QTabBar::RoundedSouth);
    tabs_->setExpanding(false);
    tabs_->setUsesScrollButtons(true);
    tabs_->setDocumentMode(true);
    tabs_->setAccessibleName(tr("Dates of the treatment"));
    approval_->setCheckable(true);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 6, 0);
    layout->addWidget(tabs_, 1);
    layout->addWidget(approval_);
    setApproval(std::nullopt);
    connect(tabs_, &QTabBar::currentChanged, this, [this](int index) {
        if (index >= 0) emit dateChosen(dates_[static_cast<std::size_t>(index)]);
    });
    connect(approval_, &QPushButton::clicked, this, &DateBar::approvalChosen);
}

void DateBar::setDates(const std::vector<QDate> &dates, const QDate &today)
{
    const QSignalBlocker blocker(tabs_);
    while (tabs_->count() > 0)
        tabs_->removeTab(0);
    dates_ = dates;
    for (const QDate &date : dates_) {
        const int tab = tabs_->addTab(date == today ? tr("Today") : shortDate(date));
        tabs_->setTabToolTip(tab, QLocale().toString(date, QLocale::LongFormat));
    }
    tabs_->setCurrentIndex(tabs_->count() - 1);
    tabs_->updateGeometry(); // a tab bar that is not shown yet does not say that it has grown
}

void DateBar::setCurrentDate(const QDate &date)
{
    const QSignalBlocker blocker(tabs_);
    const auto found = std::find(dates_.begin(), dates_.end(), date);
    if (found != dates_.end()) tabs_->setCurrentIndex(static_cast<int>(found - dates_.begin()));
}

void DateBar::setApproval(const std::optional<QDate> &approvedDate)
{
    approval_->setChecked(approvedDate.has_value());
    approval_->setText(approvedDate ? tr("Approved %1").arg(shortDate(*approvedDate))
                                    : tr("Approve"));
    approval_->setToolTip(approvedDate ? tr("Take the approval back")
                                       : tr("Approve the treatment as it is shown"));
}

} // namespace viewer
