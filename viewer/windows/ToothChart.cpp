#include "viewer/windows/ToothChart.h"

#include <QEvent>
#include <QGridLayout>
#include <QIcon>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QToolButton>

#include <algorithm>
#include <utility>

namespace viewer {
namespace {

constexpr int iconSize = 18;

enum class Shape { Square, Round };

QPixmap pictureOf(Shape shape, const std::optional<QColor> &fill, const QColor &outline)
{
    QPixmap picture(iconSize, iconSize);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(outline, 1.2, fill ? Qt::SolidLine : Qt::DotLine));
    if (fill) painter.setBrush(*fill);
    const QRectF place(2.5, 2.5, iconSize - 5.0, iconSize - 5.0);
    if (shape == Shape::Round) {
        painter.drawEllipse(place);
    } else {
        painter.drawRoundedRect(place, 2.0, 2.0);
        if (fill)
            painter.drawLine(QPointF(2.5, iconSize / 2.0), QPointF(iconSize - 2.5, iconSize / 2.0));
    }
    return picture;
}

/// A bracket or a button in its colour; an outline where there is none. Disabled it keeps its
/// colour, for which one looks at a closed note; Qt would make it grey.
QIcon iconOf(Shape shape, const std::optional<QColor> &fill, const QPalette &palette)
{
    QIcon icon(pictureOf(shape, fill, palette.color(QPalette::Active, QPalette::Text)));
    icon.addPixmap(pictureOf(shape, fill, palette.color(QPalette::Disabled, QPalette::Text)),
                   QIcon::Disabled);
    return icon;
}

QColor swatchColor(const kelo::BracketColorType &type)
{
    if (!type.bracketColor) return Qt::white;
    const auto &color = *type.bracketColor;
    return QColor::fromRgbF(static_cast<float>(color[0]), static_cast<float>(color[1]),
                            static_cast<float>(color[2]));
}

bool isOn(const kelo::DXDocumentModel::Visibilities &visibilities, const std::string &key)
{
    const auto found = visibilities.find(key);
    return found != visibilities.end() && found->second;
}

/// From the patient's right to the left, as the teeth lie for who faces the patient.
std::vector<std::string> lowerKeysFromTheRight()
{
    auto keys = kelo::TreatmentNote::lowerToothNameKeys();
    std::sort(keys.begin(), keys.end(),
              [](const auto &a, const auto &b) { return std::stoi(a) > std::stoi(b); });
    return keys;
}

std::vector<std::string> upperKeysFromTheRight()
{
    auto keys = kelo::TreatmentNote::upperToothNameKeys();
    std::sort(keys.begin(), keys.end(),
              [](const auto &a, const auto &b) { return std::stoi(a) < std::stoi(b); });
    return keys;
}

} // namespace

ToothChart::ToothChart(QWidget *parent)
    : QWidget(parent), changes_([this] {
          if (isVisible()) refresh();
      })
{
    auto *grid = new QGridLayout(this);
    grid->setSpacing(1);
    grid->setContentsMargins(0, 0, 0, 0);
    makeArch(upperKeysFromTheRight(), 0, true);
    grid->setRowMinimumHeight(3, 10);
    makeArch(lowerKeysFromTheRight(), 4, false);
    // A gap along the midline.
    grid->setColumnMinimumWidth(8, 10);
}

void ToothChart::makeArch(const std::vector<std::string> &keys, int firstRow, bool isUpper)
{
    auto *grid = static_cast<QGridLayout *>(layout());
    // The crowns of both arches meet in the middle: lingual buttons lie on the inside.
    const int toothRow = isUpper ? firstRow : firstRow + 2;
    const int bracketRow = firstRow + 1;
    const int buttonRow = isUpper ? firstRow + 2 : firstRow;
    grid->addWidget(new QLabel(tr("Tooth")), toothRow, 0);
    grid->addWidget(new QLabel(tr("Bracket")), bracketRow, 0);
    grid->addWidget(new QLabel(tr("Lingual button")), buttonRow, 0);
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const int column = static_cast<int>(i) + (i < keys.size() / 2 ? 1 : 2);
        const Column made = makeColumn(keys[i]);
        columns_[keys[i]] = made;
        grid->addWidget(made.tooth, toothRow, column);
        grid->addWidget(made.bracket, bracketRow, column);
        grid->addWidget(made.button, buttonRow, column);
    }
}

ToothChart::Column ToothChart::makeColumn(const std::string &key)
{
    const Column made{new QToolButton, new QToolButton, new QToolButton};
    for (QToolButton *button : {made.tooth, made.bracket, made.button}) {
        button->setCheckable(true);
        button->setAutoRaise(true);
        button->setIconSize({iconSize, iconSize});
        button->setFocusPolicy(Qt::StrongFocus);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }
    const auto connectToggle = [this](QToolButton *button, auto toggle) {
        connect(button, &QToolButton::clicked, this, [this, toggle] {
            if (document_) toggle(*document_);
            changes_.flush(); // the tool has only changed its own look
        });
    };
    connectToggle(made.tooth, [key](auto &document) { document.toggleVisibilityOfTooth(key); });
    connectToggle(made.bracket, [key](auto &document) { document.toggleVisibilityOfBracket(key); });
    connectToggle(made.button, [key](auto &document) {
        document.toggleVisibilityOfButton(kelo::TreatmentNote::buttonNameForToothName(key));
    });
    made.bracket->setPopupMode(QToolButton::MenuButtonPopup);
    auto *colors = new QMenu(made.bracket);
    made.bracket->setMenu(colors);
    connect(colors, &QMenu::aboutToShow, this,
            [this, made, key] { fillColorMenu(*made.bracket, key); });
    return made;
}

void ToothChart::fillColorMenu(QToolButton &bracket, const std::string &key)
{
    bracket.menu()->clear();
    if (!document_) return;
    const auto choose = [this, key](std::optional<long> typeID) {
        // Whoever chooses a colour wants to see it.
        if (typeID)
            document_->bracket_makeVisibleAndSetColorWithBracketColorTypeID(key, typeID);
        else
            document_->bracket_setColorWithBracketColorTypeID(key, typeID);
        changes_.flush();
    };
    bracket.menu()->addAction(tr("No colour"), this, [choose] { choose(std::nullopt); });
    std::vector<std::shared_ptr<kelo::BracketColorType>> types;
    for (const auto &[typeID, type] : document_->availableBracketColorTypes())
        types.push_back(type);
    std::sort(types.begin(), types.end(),
              [](const auto &a, const auto &b) { return a->displayOrder < b->displayOrder; });
    for (const auto &type : types)
        bracket.menu()->addAction(iconOf(Shape::Square, swatchColor(*type), palette()),
                                  QString::fromStdString(type->typeLabel), this,
                                  [choose, type] { choose(type->typeID); });
}

void ToothChart::setDocument(std::shared_ptr<kelo::DXDocumentModel> document)
{
    document_ = std::move(document);
    changes_.watch(document_);
    refresh();
}

void ToothChart::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    refresh();
}

void ToothChart::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    // The pictures are drawn in the colours of the theme.
    if (event->type() == QEvent::PaletteChange) refresh();
}

void ToothChart::setNotation(ToothNotation notation)
{
    notation_ = notation;
    refresh();
}

void ToothChart::setMayEdit(bool mayEdit)
{
    mayEdit_ = mayEdit;
    refresh();
}

void ToothChart::showTooth(const std::string &key, QToolButton &tooth, bool isThere)
{
    const QString name = toothName(key, notation_);
    tooth.setText(name);
    tooth.setChecked(isThere);
    tooth.setEnabled(mayEdit_);
    tooth.setToolTip(isThere ? tr("Tooth %1").arg(name) : tr("Tooth %1: missing").arg(name));
    tooth.setAccessibleName(tooth.toolTip());
}

void ToothChart::showBracket(const std::string &key, QToolButton &bracket, bool toothIsThere)
{
    const bool placed = toothIsThere && isOn(document_->bracketVisibilities(), key);
    const auto &colors = document_->bracketColorsTypeIDs();
    const auto &types = document_->availableBracketColorTypes();
    const auto color = colors.find(key);
    const auto type = color == colors.end() ? types.end() : types.find(color->second);
    const bool hasColor = type != types.end();
    const QColor fill = hasColor ? swatchColor(*type->second) : QColor(Qt::white);
    bracket.setChecked(placed);
    bracket.setEnabled(mayEdit_ && toothIsThere);
    bracket.setIcon(iconOf(Shape::Square, placed ? std::optional(fill) : std::nullopt, palette()));
    const QString what = !toothIsThere ? tr("the tooth is missing")
                         : !placed     ? tr("not placed")
                         : hasColor    ? QString::fromStdString(type->second->typeLabel)
                                       : tr("no colour");
    bracket.setToolTip(tr("Bracket %1: %2").arg(toothName(key, notation_), what));
    bracket.setAccessibleName(bracket.toolTip());
}

void ToothChart::showButton(const std::string &key, QToolButton &button, bool toothIsThere)
{
    const QString name = toothName(key, notation_);
    const bool placed = toothIsThere && isOn(document_->buttonVisibilities(),
                                             kelo::TreatmentNote::buttonNameForToothName(key));
    button.setChecked(placed);
    button.setEnabled(mayEdit_ && toothIsThere);
    button.setIcon(
        iconOf(Shape::Round, placed ? std::optional(QColor(Qt::white)) : std::nullopt, palette()));
    button.setToolTip(!toothIsThere ? tr("Lingual button %1: the tooth is missing").arg(name)
                      : placed      ? tr("Lingual button %1").arg(name)
                                    : tr("Lingual button %1: not placed").arg(name));
    button.setAccessibleName(button.toolTip());
}

void ToothChart::refresh()
{
    if (!document_) return;
    const auto teeth = document_->toothVisibilities();
    for (auto &[key, column] : columns_) {
        const bool isThere = isOn(teeth, key);
        showTooth(key, *column.tooth, isThere);
        showBracket(key, *column.bracket, isThere);
        showButton(key, *column.button, isThere);
    }
}

} // namespace viewer
