#pragma once

#include "keloOpenGL/keloOpenGL.h"
#include "tests/support/TestClock.h"
#include "tests/support/TestSurface.h"
#include "viewer/script/ScriptPlayer.h"
#include "viewer/treatment/OpenedTreatment.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace viewer::test {

/// Writes what the random scripts are played on into a folder that exists: the 86 meshes, each a
/// box of twelve triangles about where the sample patient has that tooth, bracket, button or gum,
/// and the treatment file `treatment.json` of 2026-11-20, the sample patient's with some brackets,
/// buttons and teeth taken out. Throws std::runtime_error when it cannot.
void writeRandomScriptScene(const QString &folder);

/// The treatment of such a folder in a view without a display, 120 by 90 points, on a clock that
/// stops between the lines. Only one may live at a time.
class RandomScriptScene
{
public:
    explicit RandomScriptScene(const QString &folder);
    ~RandomScriptScene();
    RandomScriptScene(const RandomScriptScene &) = delete;
    RandomScriptScene &operator=(const RandomScriptScene &) = delete;

    /// Plays one line of a script, then draws if the view asks for it. Returns false, with nothing
    /// changed, for a line that cannot be played here. An exception of the view's is kept as
    /// thrown().
    bool play(const QByteArray &line);

    /// What the first exception said; empty while there was none.
    const QString &thrown() const { return thrown_; }
    /// Whether a mouse button is held after the lines that were played.
    bool buttonIsHeld() const { return buttonIsHeld_; }
    /// The actions of the menu rows that were chosen, in order.
    const std::vector<std::string> &chosenActions() const { return chosenActions_; }
    /// How often the user was told something that had to be answered.
    int alertCount() const { return alertCount_; }
    std::shared_ptr<kelo::HVOGLMaterial> firstMaterialOfButton(const std::string &key) const
    {
        return buttonMaterials_.at(key);
    }
    /// Whether the elastic came with the last line.
    bool isNewElastic(std::uint32_t uniqueID) const { return !knownElastics_.contains(uniqueID); }
    /// The state as the viewer writes it.
    QByteArray state() const;

    kelo::DXOpenGL &view() const { return *view_; }
    kelo::DXDocumentModel &document() const { return *treatment_->document(); }
    OpenedTreatment &treatment() const { return *treatment_; }
    const std::shared_ptr<kelo::Menu> &openMenu() const { return player_->openMenu(); }

private:
    void noteChoice(const MenuCommand &choice);

    kelo::test::TestSurface surface_{kelo::SurfaceKind::Surfaceless};
    kelo::test::TestClock clock_{0.0};
    kelo::AlertPresenter::Presenter previousAlerts_;
    kelo::DXOpenGLDelegate delegate_;
    std::shared_ptr<kelo::DXOpenGL> view_;
    std::unique_ptr<OpenedTreatment> treatment_;
    std::unique_ptr<ScriptPlayer> player_;
    QString thrown_;
    bool buttonIsHeld_ = false;
    std::vector<std::string> chosenActions_;
    std::map<std::string, std::shared_ptr<kelo::HVOGLMaterial>> buttonMaterials_;
    std::set<std::uint32_t> knownElastics_;
    int alertCount_ = 0;
};

/// Checks a scene after an event; returns what is wrong with it, or an empty string.
using RandomScriptOracle = std::function<QString(RandomScriptScene &)>;

/// What is to hold after every event: nothing was thrown, the document is sane, OpenGL has no error
/// pending and its stacks are as deep as before, every number of the view's state is finite,
/// brackets have the document's colours and buttons the materials they began with, only a bracket
/// on which an elastic that is being strung began is highlighted, elastics run over what is shown
/// and are placed over no member twice in a row, they are strung in the elastics mode only and from
/// the member that was clicked first, a temporary mode has a reason, and the jaws turn only while a
/// button is held.
QString complaintAbout(RandomScriptScene &scene);

/// Whether the stored treatment reads back as what the document holds. The document reports what it
/// has gathered first, so this comes at the end.
QString complaintAboutStorage(RandomScriptScene &scene);

} // namespace viewer::test
