#pragma once

#include <QProxyStyle>

namespace kelo {

/// The application's style for the menus of views: images have their own size, and a checked row
/// with an image shows a check mark in a column of its own, beside the image; most styles draw
/// images at the size of small icons, and a frame around the image of a checked row.
class ContextMenuStyle : public QProxyStyle
{
public:
    /// imageSide: of the largest image of the menu, in points; 0 without images.
    ContextMenuStyle(int imageSide, bool hasCheckColumn);

    /// What a menu leaves free of the screen's height at the top and at the bottom, in points (0 at
    /// first); one that is higher than the rest scrolls.
    void setScreenMargin(int margin) { screenMargin_ = margin; }

    int styleHint(StyleHint hint, const QStyleOption *option = nullptr,
                  const QWidget *widget = nullptr,
                  QStyleHintReturn *returnData = nullptr) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption *option = nullptr,
                    const QWidget *widget = nullptr) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &contentsSize,
                           const QWidget *widget = nullptr) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget = nullptr) const override;

private:
    int imageSide_;
    int screenMargin_ = 0;
    bool hasCheckColumn_;
};

} // namespace kelo
