#pragma once

#include <QDate>
#include <QWidget>

#include <optional>
#include <vector>

class QPushButton;
class QTabBar;

namespace viewer {

/// The dates of a treatment's notes, oldest first, the day that is edited as the last; and
/// whether the note that is shown is approved.
class DateBar : public QWidget
{
    Q_OBJECT

public:
    explicit DateBar(QWidget *parent = nullptr);

    /// In ascending order; `today` is the last of them. Signals nothing.
    void setDates(const std::vector<QDate> &dates, const QDate &today);
    const std::vector<QDate> &dates() const { return dates_; }
    void setCurrentDate(const QDate &date);
    void setApproval(const std::optional<QDate> &approvedDate);

signals:
    void dateChosen(const QDate &date);
    /// The user approves the note that is shown, or takes the approval back.
    void approvalChosen(bool isApproved);

private:
    std::vector<QDate> dates_;
    QTabBar *tabs_;
    QPushButton *approval_;
};

} // namespace viewer
