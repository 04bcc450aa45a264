#pragma once

#include "viewer/settings/CommandLine.h"
#include "viewer/store/TreatmentStore.h"
#include "viewer/windows/TreatmentDocument.h"

#include <QObject>
#include <QString>

#include <memory>
#include <vector>

class QWidget;

namespace viewer {

class DatabaseClaim;

/// The treatments that are open, each in a window of its own, and the database that they share. A
/// treatment is open once: opening it again brings its window to the front. Main thread only.
class OpenTreatments : public QObject
{
    Q_OBJECT

public:
    /// Database, meshes and view size of everything that is opened are the command line's.
    explicit OpenTreatments(CommandLine commandLine);
    ~OpenTreatments() override;

    /// Whether the database is in another window already, which has come to the front and taken the
    /// command line's file over: then there is nothing to do here. Not for a command line that asks
    /// for a script or an output, which this program must make itself.
    bool isShownElsewhere();
    /// Opens what the command line names and shows its window; loading that takes long shows how
    /// far it is. Throws what OpenedTreatment throws.
    TreatmentDocument &openFirst();

    /// @name As the user asks for it
    /// What goes wrong is shown in a box over the window.
    /// @{
    void openFile(const QString &path, QWidget *over);
    void openStored(qint64 treatmentID, QWidget *over);
    /// Stores the treatment of a file in the database, and opens it from there.
    void importFile(const QString &path, QWidget *over);
    /// @}

    /// The database that treatments without a file are in; for reading only where another program
    /// with windows has it. A failure is a sentence for the user.
    StoreResult<std::shared_ptr<TreatmentStore>> store();

    /// A name was given to an elastic of this treatment: the other open treatments of the clinic
    /// offer it too.
    void elasticWasNamed(const OpenedTreatment &treatment);
    /// Closes every window, as their users would; false when one stays.
    bool closeAll();
    const std::vector<std::unique_ptr<TreatmentDocument>> &documents() const { return documents_; }

private:
    TreatmentDocument *openedBefore(const CommandLine &commandLine);
    TreatmentDocument &open(const CommandLine &commandLine);
    void openOrTell(const CommandLine &commandLine, QWidget *over);
    CommandLine commandLineForStored() const;
    const DatabaseClaim &claim();
    /// Another program was started on the database.
    void comeForward(const QString &file);
    void forgetClosed();

    CommandLine commandLine_;
    std::unique_ptr<DatabaseClaim> claim_;  ///< null before the database is needed
    std::shared_ptr<TreatmentStore> store_; ///< null before it is needed
    std::vector<std::unique_ptr<TreatmentDocument>> documents_;
};

} // namespace viewer
