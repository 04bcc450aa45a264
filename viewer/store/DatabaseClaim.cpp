#include "viewer/store/DatabaseClaim.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalServer>
#include <QLocalSocket>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace viewer {
namespace {

/// The longest request: a path is at most 4096 bytes, which JSON may write as six times as many.
constexpr qint64 longestRequestInBytes = 32 * 1024;

const QByteArray answerToRequest = QByteArrayLiteral("shown\n");

/// The user's own folder for what lasts as long as programs run; empty where there is none. A night
/// job has no session and no such folder: it gets a private one, or none.
QString runtimeFolder()
{
    const QString ofSession = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (QFileInfo(ofSession).isDir() && QFileInfo(ofSession).isWritable()) return ofSession;
    const QString own =
        QDir::temp().filePath(QStringLiteral("treatment-viewer-%1").arg(::geteuid()));
    const QByteArray path = QFile::encodeName(own);
    ::mkdir(path.constData(), S_IRWXU);
    // Anybody may make a folder of this name there, or a link.
    struct stat found = {};
    const bool isOurs = ::lstat(path.constData(), &found) == 0 && S_ISDIR(found.st_mode) &&
                        found.st_uid == ::geteuid() && (found.st_mode & (S_IRWXG | S_IRWXO)) == 0;
    return isOurs ? own : QString();
}

/// One name for a database, however its path is written.
QString claimName(const QString &database)
{
    const QFileInfo file(database);
    QString path = file.canonicalFilePath();
    // A database that is yet to be made has a folder at most.
    if (path.isEmpty())
        path =
            QFileInfo(file.absolutePath()).canonicalFilePath() + QLatin1Char('/') + file.fileName();
    // Short, because the path of a socket has about a hundred bytes at most.
    constexpr int digits = 32;
    const QByteArray hash = QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha256);
    return QStringLiteral("treatment-viewer-") + QString::fromLatin1(hash.toHex().left(digits));
}

} // namespace

/// A lock on a file that the system ends with the program, however that ends. The file stays.
class DatabaseClaim::Lock
{
public:
    explicit Lock(const QString &path)
        : descriptor_(::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC,
                             S_IRUSR | S_IWUSR))
    {
        if (descriptor_ < 0) return;
        isTakenElsewhere_ = ::flock(descriptor_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    }
    ~Lock()
    {
        if (descriptor_ >= 0) ::close(descriptor_);
    }
    Lock(const Lock &) = delete;
    Lock &operator=(const Lock &) = delete;

    bool isTakenElsewhere() const { return isTakenElsewhere_; }

private:
    int descriptor_;
    bool isTakenElsewhere_ = false;
};

DatabaseClaim::DatabaseClaim(const QString &database)
{
    if (database == QStringLiteral(":memory:")) return;
    const QString runtime = runtimeFolder();
    if (runtime.isEmpty()) return;
    const QDir folder(runtime);
    const QString name = claimName(database);
    socketPath_ = folder.filePath(name + QStringLiteral(".socket"));
    lock_ = std::make_unique<Lock>(folder.filePath(name + QStringLiteral(".lock")));
    isElsewhere_ = lock_->isTakenElsewhere();
    if (isElsewhere_)
        lock_.reset();
    else
        listen();
}

DatabaseClaim::~DatabaseClaim() = default;

void DatabaseClaim::listen()
{
    server_ = std::make_unique<QLocalServer>();
    server_->setSocketOptions(QLocalServer::UserAccessOption);
    // The lock is ours, so nobody listens here: a crash left whatever is there.
    QLocalServer::removeServer(socketPath_);
    connect(server_.get(), &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket *const socket = server_->nextPendingConnection()) {
            connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
            connect(socket, &QLocalSocket::readyRead, this, [this, socket] { answer(*socket); });
            answer(*socket);
        }
    });
    // Without it a second program opens for reading only.
    server_->listen(socketPath_);
}

void DatabaseClaim::answer(QLocalSocket &socket)
{
    if (!socket.canReadLine()) {
        if (socket.bytesAvailable() > longestRequestInBytes) socket.abort();
        return;
    }
    const auto request = QJsonDocument::fromJson(socket.readLine(longestRequestInBytes));
    if (!request.isObject()) {
        socket.abort();
        return;
    }
    // Answered first: a file may take long to open, or bring a question.
    socket.write(answerToRequest);
    socket.flush();
    socket.disconnectFromServer();
    emit wanted(request.object().value(QStringLiteral("file")).toString());
}

bool DatabaseClaim::bringOtherForward(const QString &file, int timeoutInMilliseconds) const
{
    QLocalSocket socket;
    socket.connectToServer(socketPath_);
    if (!socket.waitForConnected(timeoutInMilliseconds)) return false;
    const QString path = file.isEmpty() ? QString() : QFileInfo(file).absoluteFilePath();
    socket.write(
        QJsonDocument(QJsonObject{{QStringLiteral("file"), path}}).toJson(QJsonDocument::Compact) +
        '\n');
    while (!socket.canReadLine()) {
        if (!socket.waitForReadyRead(timeoutInMilliseconds)) return false;
    }
    return socket.readLine() == answerToRequest;
}

} // namespace viewer
