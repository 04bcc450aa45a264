#include "viewer/ShownText.h"

#include <cstdio>

namespace viewer {
namespace {

bool steersTerminals(QChar character)
{
    if (character == QLatin1Char('\n')) return false;
    // Other_Control is what terminals obey; Other_Format has the marks that turn a text's
    // direction.
    const QChar::Category category = character.category();
    return category == QChar::Other_Control || category == QChar::Other_Format ||
           category == QChar::Separator_Line || category == QChar::Separator_Paragraph;
}

QString written(QChar character)
{
    const ushort code = character.unicode();
    return code < 0x100 ? QStringLiteral("\\x%1").arg(code, 2, 16, QLatin1Char('0'))
                        : QStringLiteral("\\u%1").arg(code, 4, 16, QLatin1Char('0'));
}

} // namespace

QString shortened(const QString &text)
{
    if (text.size() <= mostShownCharacters) return text;
    qsizetype length = mostShownCharacters;
    if (text[length - 1].isHighSurrogate()) --length; // half a character is none
    return text.left(length) + QStringLiteral("…");
}

QString terminalText(const QString &message)
{
    QString shown;
    shown.reserve(message.size());
    for (const QChar character : message) {
        if (steersTerminals(character))
            shown += written(character);
        else
            shown += character;
    }
    return shown;
}

void tellUser(const QString &message)
{
    std::fprintf(stderr, "%s\n", terminalText(message).toUtf8().constData());
}

} // namespace viewer
