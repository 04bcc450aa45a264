#include "platform/widgets/InterfaceFile.h"

#include "platform/settings/ResourceBundle.h"

#include <QFile>
#include <QFileInfo>
#include <QUiLoader>
#include <QWidget>

#include <map>
#include <vector>

namespace kelo {
namespace {

std::vector<std::string> &folders()
{
    static std::vector<std::string> all;
    return all;
}

using Maker = std::function<QWidget *(QWidget *)>;

std::map<std::string, Maker> &classes()
{
    static std::map<std::string, Maker> all;
    return all;
}

/// Qt's loader, which also knows the registered classes.
class Loader : public QUiLoader
{
public:
    QWidget *createWidget(const QString &className, QWidget *parent, const QString &name) override
    {
        const auto known = classes().find(className.toStdString());
        if (known == classes().end()) return QUiLoader::createWidget(className, parent, name);
        QWidget *widget = known->second(parent);
        widget->setObjectName(name);
        return widget;
    }
};

} // namespace

void addInterfaceFileFolder(const std::string &folder)
{
    folders().push_back(folder);
}

void removeInterfaceFileFolders()
{
    folders().clear();
}

void registerInterfaceFileClass(const std::string &className, Maker make)
{
    classes()[className] = std::move(make);
}

std::string interfaceFilePath(const std::string &name)
{
    for (auto folder = folders().rbegin(); folder != folders().rend(); ++folder) {
        const std::string path = *folder + "/" + name + ".ui";
        if (QFileInfo(QString::fromStdString(path)).isFile()) return path;
    }
    const auto bundle = ResourceBundle::bundleWithIdentifier(libraryBundleIdentifier);
    return bundle ? bundle->pathForResource_ofType(name, "ui").value_or("") : "";
}

std::unique_ptr<QWidget> loadInterfaceFile(const std::string &name)
{
    const std::string path = interfaceFilePath(name);
    if (path.empty())
        throw InterfaceFileProblem("The interface file \"" + name + "\" was not found");
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly))
        throw InterfaceFileProblem(path +
                                   ": could not be read: " + file.errorString().toStdString());
    Loader loader;
    std::unique_ptr<QWidget> widget(loader.load(&file));
    if (!widget) throw InterfaceFileProblem(path + ": " + loader.errorString().toStdString());
    return widget;
}

} // namespace kelo
