#pragma once

#include <QDialog>
#include <QString>

#include <functional>

class QLabel;
class QLineEdit;
class QPushButton;

namespace viewer {

/// Asks for the name of an elastic. A name that cannot be had is told while it is typed, and cannot
/// be taken.
class ElasticNameSheet : public QDialog
{
    Q_OBJECT

public:
    /// `problem` says what is wrong with a name, or returns an empty text.
    ElasticNameSheet(const QString &question, const QString &presentName,
                     std::function<QString(const QString &)> problem, QWidget *parent = nullptr);

    QString name() const;

private:
    void check();

    std::function<QString(const QString &)> problem_;
    QLineEdit *name_;
    QLabel *reason_;
    QPushButton *accept_;
};

} // namespace viewer
