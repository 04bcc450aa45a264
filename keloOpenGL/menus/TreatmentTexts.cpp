#include "keloOpenGL/menus/TreatmentTexts.h"

#include <QCoreApplication>

namespace kelo {

std::string filled(const std::string &format, const std::string &value)
{
    const std::size_t mark = format.find("%@");
    if (mark == std::string::npos) return format;
    return format.substr(0, mark) + value + format.substr(mark + 2);
}

std::string translated(const char *text)
{
    return QCoreApplication::translate("DXOpenGL", text).toStdString();
}

void setTitle(MenuItem &item, const char *text, const std::string &value)
{
    item.title = filled(text, value);
    item.shownTitle = filled(translated(text), value);
}

} // namespace kelo
