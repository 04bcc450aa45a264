#pragma once

#include "keloOpenGL/keloOpenGL.h"
#include "viewer/view/SceneMaterials.h"

#include <QPointer>

#include <functional>
#include <string>

class QComboBox;
class QPushButton;
class QSlider;

namespace viewer {

/// The option panel for colour and shininess of the teeth, the gums, the brackets without a colour
/// of their own, and the lingual buttons.
class MaterialsPanel : public kelo::OptionPanelController
{
    Q_OBJECT

public:
    static constexpr const char *name = "Materials"; ///< of the interface file

    /// The materials are not owned, and outlive the panel's window. `materialChanged` draws the
    /// scene anew.
    MaterialsPanel(const std::string &windowNibName, SceneMaterials &materials,
                   std::function<void()> materialChanged);

    void awakeFromNib() override;

private:
    MaterialPart part() const;
    void chooseColor();
    void showPart();
    void changed();

    SceneMaterials &materials_;
    std::function<void()> materialChanged_;
    QPointer<QComboBox> part_;
    QPointer<QPushButton> color_;
    QPointer<QSlider> shininess_;
    QPointer<QPushButton> restoreDefaults_;
};

} // namespace viewer
