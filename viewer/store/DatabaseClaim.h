#pragma once

#include <QObject>
#include <QString>

#include <memory>

class QLocalServer;
class QLocalSocket;

namespace viewer {

/// The claim of a program with windows to a database: the first one has it for as long as it runs,
/// and a second one can ask it to come to the front. A program that crashed has no claim any more.
/// Claims are per user and machine; ":memory:" is never shared. Main thread only.
class DatabaseClaim : public QObject
{
    Q_OBJECT

public:
    /// Claims the database if nobody has. Where claims cannot be kept (no folder for them), it
    /// counts as ours.
    explicit DatabaseClaim(const QString &database);
    ~DatabaseClaim() override;

    /// Whether another program has the database.
    bool isElsewhere() const { return isElsewhere_; }

    /// Asks the program that has it to come to the front, and to take the treatment file over
    /// (empty: none). Returns whether it answered within the time; it may be busy, or hang.
    bool bringOtherForward(const QString &file, int timeoutInMilliseconds = 10000) const;

signals:
    /// Another program asks for the window, and brings a treatment file along, or none.
    void wanted(const QString &file);

private:
    class Lock;
    void listen();
    void answer(QLocalSocket &socket);

    QString socketPath_;
    std::unique_ptr<Lock> lock_; ///< null where the database is not claimed here
    bool isElsewhere_ = false;
    std::unique_ptr<QLocalServer> server_; ///< before the lock ends nobody else listens
};

} // namespace viewer
