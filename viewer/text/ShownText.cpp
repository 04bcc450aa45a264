#include "viewer/text/ShownText.h"

#include <QStringList>

#include <cstdio>

namespace viewer {
namespace {

bool steersTerminals(QChar character)
{
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

/// Without what would steer a terminal, line breaks included: a name with one in it could pass for
/// a line of the program's own.
QString oneLine(const QString &text)
{
    QString shown;
    shown.reserve(text.size());
    for (const QChar character : text)
        shown += steersTerminals(character) ? written(character) : QString(character);
    return shown;
}

} // namespace

QString shortened(const QString &text, qsizetype mostCharacters)
{
    if (text.size() <= mostCharacters) return oneLine(text);
    qsizetype length = mostCharacters;
    if (text[length - 1].isHighSurrogate()) --length; // half a character is none
    return oneLine(text.left(length)) + QStringLiteral("…");
}

QString terminalText(const QString &message)
{
    // Between the lines that the program joined; those of others were escaped with their texts.
    QStringList lines = message.split(QLatin1Char('\n'));
    for (QString &line : lines)
        line = oneLine(line);
    return lines.join(QLatin1Char('\n'));
}

void tellUser(const QString &message)
{
    std::fprintf(stderr, "%s\n", terminalText(message).toUtf8().constData());
}

} // namespace viewer
