#include "models/MeshFailure.h"

#include "models/OBJReaderText.h"

namespace kelo {

std::string MeshFailure::sentence() const
{
    std::string text = shownText(file, longestShownPath);
    if (line != 0) text += ":" + std::to_string(line);
    if (!text.empty()) text += ": ";
    text += shownText(reason, longestShownPath);
    if (!key.empty()) text += " (" + shownText(key, longestShownToken) + ")";
    return text;
}

} // namespace kelo
