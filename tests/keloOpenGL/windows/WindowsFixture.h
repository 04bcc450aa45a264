#pragma once

#include "keloOpenGL/windows/DXDocument.h"
#include "keloOpenGL/windows/SolidWindowController.h"
#include "platform/widgets/InterfaceFile.h"
#include "tests/keloOpenGL/ViewFixture.h"
#include "tests/support/WindowTest.h"

#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>

namespace kelo::test {

/// A window in an interface file: a widget of the class with this name, and what is in it.
inline QByteArray interfaceFile(const char *name, const char *content = "")
{
    return QByteArray("<?xml version=\"1.0\"?>\n<ui version=\"4.0\"><class>") + name +
           "</class><widget class=\"QWidget\" name=\"" + name + "\">" + content +
           "</widget></ui>\n";
}

/// A document, and a folder for interface files of the host's.
class Windows : public ViewFixture
{
protected:
    Windows() { addInterfaceFileFolder(folder.path().toStdString()); }
    ~Windows() override { removeInterfaceFileFolders(); }

    void write(const char *name, const QByteArray &text)
    {
        QFile file(folder.filePath(QString(name) + ".ui"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    SolidWindowController &mainWindow()
    {
        if (document.windowControllers().empty()) document.showWindows();
        return dynamic_cast<SolidWindowController &>(*document.windowControllers().front());
    }

    QTemporaryDir folder;
    DXDocument document;
};

} // namespace kelo::test
