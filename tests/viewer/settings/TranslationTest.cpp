// The viewer's texts in other languages.

#include "viewer/settings/Translation.h"

#include "viewer/text/ToothNotation.h"
#include "viewer/treatment/ChangeText.h"
#include "viewer/view/StandardView.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QRegularExpression>
#include <QTranslator>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

namespace {

using namespace viewer;

/// Takes away what a test installed.
class Translations : public testing::Test
{
protected:
    ~Translations() override
    {
        for (auto *translator : QCoreApplication::instance()->findChildren<QTranslator *>())
            delete translator;
    }
};

struct Text
{
    QString source;
    QStringList translations;
    bool isFinished = true;
};

QList<Text> textsOf(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    QXmlStreamReader xml(&file);
    QList<Text> texts;
    while (!xml.atEnd()) {
        if (!xml.readNextStartElement() && xml.tokenType() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == u"source") {
            texts.append({xml.readElementText(), {}, true});
        } else if (xml.name() == u"translation") {
            texts.back().isFinished = !xml.attributes().hasAttribute("type");
            const QString text = xml.readElementText(QXmlStreamReader::IncludeChildElements);
            texts.back().translations << text;
        }
    }
    return texts;
}

QStringList placesIn(const QString &text)
{
    static const QRegularExpression place(QStringLiteral("%[0-9n@]"));
    QStringList places;
    for (auto found = place.globalMatch(text); found.hasNext();)
        places << found.next().captured();
    places.removeDuplicates();
    places.sort();
    return places;
}

TEST_F(Translations, everyTextIsTranslatedAndHasTheSourcesPlaces)
{
    const QDir folder(QStringLiteral(KELO_SOURCE_DIR "/viewer/translations"));
    for (const QString name : {"treatment-viewer_de.ts", "treatment-viewer_es.ts"}) {
        const auto texts = textsOf(folder.filePath(name));
        EXPECT_GT(texts.size(), 200);
        for (const Text &text : texts) {
            EXPECT_TRUE(text.isFinished) << name.toStdString() << ": " << text.source.toStdString();
            EXPECT_EQ(placesIn(text.translations.join(QString())), placesIn(text.source))
                << name.toStdString() << ": " << text.source.toStdString();
        }
    }
}

TEST_F(Translations, germanAndSpanishAreThere)
{
    installTranslations(QLocale(QLocale::German, QLocale::Austria));
    EXPECT_EQ(titleOfStandardView(StandardView::UpperOcclusal), "Oberkiefer okklusal");
    EXPECT_EQ(QCoreApplication::translate("DXOpenGL", "Remove Tooth"), "Zahn entfernen")
        << "the view's menus too";
    for (auto *translator : QCoreApplication::instance()->findChildren<QTranslator *>())
        delete translator;
    installTranslations(QLocale(QLocale::Spanish, QLocale::Mexico));
    EXPECT_EQ(titleOfStandardView(StandardView::UpperOcclusal), "Oclusal superior");
}

TEST_F(Translations, whereThereAreNoneEverythingIsEnglish)
{
    installTranslations(QLocale(QLocale::Finnish, QLocale::Finland));
    EXPECT_EQ(titleOfStandardView(StandardView::UpperOcclusal), "Upper Occlusal");
    EXPECT_EQ(QCoreApplication::translate("ChangeText", "Place %n elastics", nullptr, 1),
              "Place 1 elastic");
    EXPECT_EQ(QCoreApplication::translate("ChangeText", "Place %n elastics", nullptr, 2),
              "Place 2 elastics");
}

TEST_F(Translations, pluralsGoByTheNumber)
{
    installTranslations(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(QCoreApplication::translate("ChangeText", "Place %n teeth", nullptr, 1),
              "1 Zahn einsetzen");
    EXPECT_EQ(QCoreApplication::translate("ChangeText", "Place %n teeth", nullptr, 5),
              "5 Zähne einsetzen");
}

} // namespace
