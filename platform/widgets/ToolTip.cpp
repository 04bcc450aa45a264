#include "platform/widgets/ToolTip.h"

#include <QApplication>
#include <QCursor>
#include <QToolTip>

namespace kelo {
namespace {

bool canShow()
{
    return qobject_cast<QApplication *>(QCoreApplication::instance()) != nullptr;
}

} // namespace

void showToolTip(const std::string &text)
{
    if (canShow()) QToolTip::showText(QCursor::pos(), QString::fromStdString(text));
}

void hideToolTip()
{
    if (canShow()) QToolTip::hideText();
}

} // namespace kelo
