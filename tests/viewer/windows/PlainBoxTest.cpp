// The boxes of the viewer, on a display.

#include "viewer/windows/PlainBox.h"

#include "keloModel/Catalogue.h"
#include "tests/viewer/support/TreatmentWindowFixture.h"

#include <memory>

using namespace viewer;
using namespace viewer::test;

namespace {

TEST(PlainBox, markupOfAFileIsShownAsItStands)
{
    QMessageBox box;
    setPlainText(box, "<b>x</b>", "Ask somebody.");
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_EQ(box.text().toStdString(), "<b>x</b>");
    EXPECT_EQ(box.informativeText().toStdString(), "Ask somebody.");
}

TEST(PlainBox, whatSteersTheDirectionIsWrittenOut)
{
    EXPECT_EQ(boxText(QString("a") + QChar(0x202e) + "b\nc").toStdString(), "a\\u202eb\nc");
}

TEST(PlainBox, aLineThatIsTooLongIsCutAndTheNextOneIsNot)
{
    EXPECT_EQ(boxText(QString(1000, 'x')), QString(1000, 'x'));
    EXPECT_EQ(boxText(QString(1001, 'x') + "\nnext"),
              QString(1000, 'x') + QStringLiteral("…\nnext"));
}

class BoxesOfWindows : public TreatmentWindows
{};

TEST_F(BoxesOfWindows, aNameThatLooksLikeMarkupIsShownAsItStands)
{
    const TreatmentDocument &document = open();
    const QString file = folder.filePath("<b>x.json");
    for (const bool imports : {false, true}) {
        saidAs = Qt::AutoText;
        answerNextBox(QMessageBox::Ok);
        if (imports)
            all->importFile(file, &windowOf(document));
        else
            all->openFile(file, &windowOf(document));
        EXPECT_EQ(saidAs, Qt::PlainText);
        EXPECT_EQ(said, file + ": could not be read: No such file or directory");
        EXPECT_EQ(advised, QString()) << "there is no advice on files";
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(BoxesOfWindows, anElasticsLabelIsShownAsItStands)
{
    TreatmentDocument &document = open();
    kelo::ElasticsConfigType configuration;
    configuration.typeLabel = "<b>x</b>";
    configuration.bracketSequence = "6,30";
    const auto &ask = document.mainWindow()->view().delegate()->mayPlaceAgain;
    answerNextBox(QMessageBox::No);
    EXPECT_FALSE(ask(std::make_shared<kelo::ElasticsConfigType>(configuration)));
    EXPECT_EQ(saidAs, Qt::PlainText);
    EXPECT_TRUE(said.contains("Place <b>x</b> on top of it as a second one?"))
        << said.toStdString();
    EXPECT_NO_GL_ERROR();
}

} // namespace
