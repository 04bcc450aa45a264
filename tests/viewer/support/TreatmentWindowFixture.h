#pragma once

#include "tests/support/GLTest.h"
#include "tests/support/TestSurface.h"
#include "tests/support/WindowTest.h"
#include "tests/viewer/support/PreferencesFixture.h"
#include "viewer/treatment/OpenedTreatment.h"
#include "viewer/windows/InterfaceFiles.h"
#include "viewer/windows/OpenTreatments.h"
#include "viewer/windows/TreatmentWindow.h"

#include <QAbstractButton>
#include <QAction>
#include <QFile>
#include <QMainWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QTimer>

#include <memory>

namespace viewer::test {

using kelo::test::displayIsSettled;
using kelo::test::letPass;
using kelo::test::waitUntil;

/// The viewer's windows on a display, with a database of their own.
class TreatmentWindows : public testing::Test
{
protected:
    TreatmentWindows()
    {
        addViewerInterfaceFiles();
        commandLine.database = folder.filePath("treatments.sqlite");
        commandLine.size = {400.0, 300.0};
        commandLine.isSizeGiven = true;
    }
    ~TreatmentWindows() override
    {
        all.reset();
        kelo::removeInterfaceFileFolders();
    }

    TreatmentDocument &open()
    {
        all = std::make_unique<OpenTreatments>(commandLine);
        TreatmentDocument &document = all->openFirst();
        waitUntil([&] { return document.mainWindow()->view().isExposed(); });
        return document;
    }
    static QMainWindow &windowOf(const TreatmentDocument &document)
    {
        return *qobject_cast<QMainWindow *>(document.windowControllers().front()->window());
    }
    static QAction *action(const TreatmentDocument &document, const QString &text)
    {
        for (QAction *one : windowOf(document).findChildren<QAction *>()) {
            if (QString(one->text()).remove('&') == text) return one;
        }
        // Rows of the window's menus are children of what made them.
        for (QAction *menu : windowOf(document).menuBar()->actions()) {
            for (QAction *one : menu->menu()->actions()) {
                if (QString(one->text()).remove('&') == text) return one;
                if (!one->menu()) continue;
                for (QAction *inner : one->menu()->actions()) {
                    if (QString(inner->text()).remove('&') == text) return inner;
                }
            }
        }
        return nullptr;
    }
    static bool bracketIsPlaced(const TreatmentDocument &document, const char *key)
    {
        return document.treatment()->document()->bracketVisibilities().at(key);
    }
    /// A treatment file with one coloured bracket.
    QString writeFile(const QString &name)
    {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(R"({"format": "treatment", "version": 1,
            "patient": {"name": "Other Patient", "id": "O-2"}, "currentDate": "2020-03-04",
            "notes": [{"date": "2020-03-04", "bracketVisibilities": {"8": true},
                       "bracketColorTypeIDs": {"8": 5}}]})");
        return file.fileName();
    }
    /// Presses a button of the next message box, and remembers what the box said.
    void answerNextBox(QMessageBox::StandardButton button)
    {
        QTimer::singleShot(0, &receiver, [this, button] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!box) {
                answerNextBox(button);
                return;
            }
            said = box->text();
            saidAs = box->textFormat();
            advised = box->informativeText();
            box->button(button)->click();
        });
    }
    void waitForClosed()
    {
        EXPECT_TRUE(waitUntil([this] { return all->documents().empty(); }));
    }

    kelo::test::TestSurface surface{kelo::SurfaceKind::Window};
    PreferencesOfTheTest settings;
    QTemporaryDir folder;
    CommandLine commandLine;
    std::unique_ptr<OpenTreatments> all;
    QObject receiver;
    QString said;
    Qt::TextFormat saidAs = Qt::AutoText;
    QString advised;
};

} // namespace viewer::test
