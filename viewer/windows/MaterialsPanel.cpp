#include "viewer/windows/MaterialsPanel.h"

#include <QColor>
#include <QColorDialog>
#include <QComboBox>
#include <QIcon>
#include <QPixmap>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>

#include <algorithm>
#include <cmath>
#include <utility>

namespace viewer {
namespace {

constexpr int materialSwatchSize = 16;

QColor asQColor(const kelo::HVOGLMaterial &material)
{
    const kelo::Color color = material.color().value_or(kelo::Color::whiteColor());
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue));
}

} // namespace

MaterialsPanel::MaterialsPanel(const std::string &windowNibName, SceneMaterials &materials,
                               std::function<void()> materialChanged)
    : OptionPanelController(windowNibName),
      materials_(materials),
      materialChanged_(std::move(materialChanged))
{}

void MaterialsPanel::awakeFromNib()
{
    OptionPanelController::awakeFromNib();
    QWidget *const panel = window();
    part_ = panel->findChild<QComboBox *>(QStringLiteral("part"));
    color_ = panel->findChild<QPushButton *>(QStringLiteral("color"));
    shininess_ = panel->findChild<QSlider *>(QStringLiteral("shininess"));
    restoreDefaults_ = panel->findChild<QPushButton *>(QStringLiteral("restoreDefaults"));
    auto *saveDefaults = panel->findChild<QPushButton *>(QStringLiteral("saveDefaults"));
    auto *factory = panel->findChild<QPushButton *>(QStringLiteral("restoreFactoryDefaults"));
    kelo::assertThat(part_ && color_ && shininess_ && restoreDefaults_ && saveDefaults && factory,
                     "The interface file Materials lacks a part of its panel");
    part_->addItems(
        {tr("Teeth"), tr("Gums"), tr("Brackets without a colour"), tr("Lingual buttons")});
    connect(part_, &QComboBox::currentIndexChanged, this, &MaterialsPanel::showPart);
    connect(color_, &QPushButton::clicked, this, &MaterialsPanel::chooseColor);
    connect(shininess_, &QSlider::valueChanged, this, [this](int value) {
        materials_.setShininess(part(), value);
        changed();
    });
    connect(saveDefaults, &QPushButton::clicked, this, [this] {
        materials_.saveDefaults(part());
        showPart();
    });
    connect(restoreDefaults_, &QPushButton::clicked, this, [this] {
        materials_.restoreDefaults(part());
        changed();
    });
    connect(factory, &QPushButton::clicked, this, [this] {
        materials_.restoreFactoryDefaults(part());
        changed();
    });
    showPart();
}

MaterialPart MaterialsPanel::part() const
{
    return materialParts[static_cast<std::size_t>(std::max(part_->currentIndex(), 0))];
}

void MaterialsPanel::chooseColor()
{
    const QColor chosen = QColorDialog::getColor(asQColor(materials_.material(part())), window(),
                                                 tr("Colour of %1").arg(part_->currentText()));
    if (!chosen.isValid()) return;
    materials_.setColor(part(), {chosen.redF(), chosen.greenF(), chosen.blueF(), 1.0});
    changed();
}

void MaterialsPanel::changed()
{
    showPart();
    materialChanged_();
}

void MaterialsPanel::showPart()
{
    const kelo::HVOGLMaterial &material = materials_.material(part());
    const QColor color = asQColor(material);
    QPixmap swatch(materialSwatchSize, materialSwatchSize);
    swatch.fill(color);
    color_->setIcon(QIcon(swatch));
    color_->setText(color.name());
    const QSignalBlocker blocker(shininess_);
    shininess_->setValue(static_cast<int>(std::lround(material.shininess())));
    restoreDefaults_->setEnabled(materials_.hasDefaults(part()));
}

} // namespace viewer
