#include "viewer/settings/Translation.h"

#include "keloOpenGL/keloOpenGL.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <memory>

namespace viewer {
namespace {

/// The application keeps it for its life.
void install(std::unique_ptr<QTranslator> translator)
{
    translator->setParent(QCoreApplication::instance());
    QCoreApplication::installTranslator(translator.release());
}

bool installViewerTexts(const QString &language)
{
    const auto bundle = kelo::ResourceBundle::bundleWithIdentifier(kelo::keloOpenGLBundleKey);
    const auto path =
        bundle ? bundle->pathForResource_ofType("treatment-viewer_" + language.toStdString(), "qm")
               : std::nullopt;
    auto translator = std::make_unique<QTranslator>();
    if (!path || !translator->load(QString::fromStdString(*path))) return false;
    install(std::move(translator));
    return true;
}

} // namespace

void installTranslations(const QLocale &locale)
{
    // English has plurals that the sources cannot: "1 tooth", "2 teeth".
    const QString language = locale.name().section(QLatin1Char('_'), 0, 0);
    if (!installViewerTexts(language)) {
        installViewerTexts(QStringLiteral("en"));
        return; // half of the texts in another language would be worse than none
    }
    auto translator = std::make_unique<QTranslator>();
    if (translator->load(locale, QStringLiteral("qtbase"), QStringLiteral("_"),
                         QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        install(std::move(translator));
}

} // namespace viewer
