#include "viewer/script/Script.h"

#include "platform/view/Event.h"
#include "viewer/files/Limits.h"
#include "viewer/text/ShownText.h"
#include "viewer/view/ScenePartNames.h"

#include <QHash>
#include <QLocale>
#include <QStringDecoder>

#include <cmath>
#include <functional>
#include <stdexcept>

namespace viewer {
namespace {

constexpr int mostClicks = 9;
/// Wrong lines that are reported; nobody reads more.
constexpr qsizetype mostProblems = 100;

/// One piece of a line.
struct Word
{
    QString text;
    bool isQuoted = false;
};

/// What is wrong with a line.
class BadLine : public std::runtime_error
{
public:
    explicit BadLine(const QString &reason) : std::runtime_error(reason.toStdString()) {}
};

/// Splits at blanks. Text in double quotes is one word; in it a backslash precedes a quote or
/// a backslash that is meant as such.
std::vector<Word> wordsOf(const QString &line)
{
    std::vector<Word> words;
    for (qsizetype i = 0; i < line.size();) {
        const QChar first = line[i];
        if (first == QLatin1Char('#')) break;
        if (first.isSpace()) {
            ++i;
            continue;
        }
        Word word;
        if (first == QLatin1Char('"')) {
            word.isQuoted = true;
            for (++i; i < line.size() && line[i] != QLatin1Char('"'); ++i) {
                if (line[i] == QLatin1Char('\\') && i + 1 < line.size()) ++i;
                word.text += line[i];
            }
            if (i++ == line.size()) throw BadLine(QStringLiteral("a quotation mark is missing"));
        } else {
            while (i < line.size() && !line[i].isSpace() && line[i] != QLatin1Char('#'))
                word.text += line[i++];
        }
        words.push_back(word);
    }
    return words;
}

std::uint32_t modifierNamed(const QString &name)
{
    static const QHash<QString, std::uint32_t> modifiers = {
        {QStringLiteral("control"), kelo::ModifierFlag::Control},
        {QStringLiteral("shift"), kelo::ModifierFlag::Shift},
        {QStringLiteral("option"), kelo::ModifierFlag::Option},
        {QStringLiteral("command"), kelo::ModifierFlag::Command},
    };
    return modifiers.value(name, 0);
}

/// Reads the words of a line one after another.
class LineReader
{
public:
    explicit LineReader(std::vector<Word> words) : words_(std::move(words)) {}

    bool atEnd() const { return next_ == words_.size(); }
    QString peek() const { return atEnd() ? QString() : words_[next_].text; }
    bool nextIsQuoted() const { return !atEnd() && words_[next_].isQuoted; }

    QString text(const char *what)
    {
        if (atEnd()) throw BadLine(QStringLiteral("%1 is missing").arg(QLatin1String(what)));
        return words_[next_++].text;
    }

    QString quotedText(const char *what)
    {
        if (!atEnd() && !nextIsQuoted())
            throw BadLine(QStringLiteral("%1 must stand in quotation marks, not be '%2'")
                              .arg(QLatin1String(what), shownWord()));
        return text(what);
    }

    double number(const char *what)
    {
        const QString word = text(what);
        bool isNumber = false;
        const double value = QLocale::c().toDouble(word, &isNumber);
        if (!isNumber || !std::isfinite(value))
            throw BadLine(QStringLiteral("%1 must be a number, not '%2'")
                              .arg(QLatin1String(what), shortened(word)));
        return value;
    }

    double seconds()
    {
        const double value = number("SECONDS");
        if (value < 0.0)
            throw BadLine(QStringLiteral("SECONDS must be 0 at least, not %1").arg(value));
        if (value > mostSeconds)
            throw BadLine(QStringLiteral("SECONDS must be %1 at most, not %2")
                              .arg(QString::number(mostSeconds), QString::number(value)));
        return value;
    }

    int wholeNumber(int least, int most, const char *what)
    {
        const QString word = text(what);
        bool isNumber = false;
        const int value = word.toInt(&isNumber);
        if (!isNumber || value < least || value > most)
            throw BadLine(QStringLiteral("%1 must be a whole number from %2 to %3, not '%4'")
                              .arg(QLatin1String(what), QString::number(least),
                                   QString::number(most), shortened(word)));
        return value;
    }

    kelo::Point point()
    {
        const double x = number("X");
        return {x, number("Y")};
    }

    /// The date, or nothing for the word that means none.
    std::optional<QDate> dateOr(const QString &otherWord)
    {
        const QString word = text("the date");
        if (word == otherWord) return std::nullopt;
        const QDate date = QDate::fromString(word, Qt::ISODate);
        if (!date.isValid() || word.size() != 10)
            throw BadLine(QStringLiteral("the date must be YYYY-MM-DD or '%1', not '%2'")
                              .arg(otherWord, shortened(word)));
        return date;
    }

    /// [clicks N]
    int clicks()
    {
        if (peek() != QStringLiteral("clicks")) return 1;
        ++next_;
        return wholeNumber(1, mostClicks, "the number of clicks");
    }

    /// [MODIFIER...] to the end of the line.
    std::uint32_t modifiers()
    {
        std::uint32_t flags = 0;
        while (!atEnd()) {
            const QString name = text("the modifier");
            const std::uint32_t flag = modifierNamed(name);
            if (flag == 0)
                throw BadLine(QStringLiteral("'%1' is no modifier; there are control, shift, "
                                             "option and command")
                                  .arg(shortened(name)));
            flags |= flag;
        }
        return flags;
    }

    void end() const
    {
        if (!atEnd()) throw BadLine(QStringLiteral("'%1' is too much").arg(shownWord()));
    }

private:
    QString shownWord() const { return shortened(peek()); }

    std::vector<Word> words_;
    std::size_t next_ = 0;
};

using CommandReader = std::function<ScriptCommand(LineReader &)>;

ScriptCommand readPress(LineReader &line)
{
    PressCommand press;
    const QString button = line.text("the button");
    if (button != QStringLiteral("left") && button != QStringLiteral("right"))
        throw BadLine(
            QStringLiteral("the button is 'left' or 'right', not '%1'").arg(shortened(button)));
    press.isRight = button == QStringLiteral("right");
    press.point = line.point();
    press.clickCount = line.clicks();
    press.modifierFlags = line.modifiers();
    return press;
}

/// Throws BadLine for a name that none of the overlay's tools has.
void checkTool(const QString &name)
{
    QStringList tools;
    for (const std::string &known : kelo::DXOpenGL::toolNames())
        tools.append(QString::fromStdString(known));
    if (tools.contains(name)) return;
    const QString last = tools.takeLast();
    throw BadLine(QStringLiteral("the tools are %1 and %2, not '%3'")
                      .arg(tools.join(QStringLiteral(", ")), last, shortened(name)));
}

ScriptCommand readClick(LineReader &line)
{
    using Target = ClickCommand::Target;
    static const QHash<QString, Target> targets = {
        {QStringLiteral("tooth"), Target::Tooth},   {QStringLiteral("bracket"), Target::Bracket},
        {QStringLiteral("button"), Target::Button}, {QStringLiteral("elastic"), Target::Elastic},
        {QStringLiteral("tool"), Target::Tool},
    };
    ClickCommand click;
    click.target = targets.value(line.peek(), Target::Point);
    if (click.target == Target::Point) {
        click.point = line.point();
    } else {
        line.text("the kind");
        if (click.target == Target::Elastic)
            click.name = QString::number(line.wholeNumber(0, 8388607, "the elastic's number"));
        else
            click.name = line.text("the name");
        if (click.target == Target::Tool) checkTool(click.name);
    }
    click.clickCount = line.clicks();
    click.modifierFlags = line.modifiers();
    return click;
}

ScriptCommand readScroll(LineReader &line)
{
    ScrollCommand scroll;
    scroll.deltaX = line.number("DX");
    scroll.deltaY = line.number("DY");
    if (!line.atEnd()) scroll.point = line.point();
    return scroll;
}

ScriptCommand readKey(LineReader &line)
{
    static const QHash<QString, char16_t> names = {
        {QStringLiteral("up"), kelo::FunctionKey::UpArrow},
        {QStringLiteral("down"), kelo::FunctionKey::DownArrow},
        {QStringLiteral("left"), kelo::FunctionKey::LeftArrow},
        {QStringLiteral("right"), kelo::FunctionKey::RightArrow},
        {QStringLiteral("escape"), kelo::FunctionKey::Escape},
        {QStringLiteral("menu"), kelo::FunctionKey::Menu},
    };
    const QString name = line.text("the key");
    KeyCommand key;
    key.character = names.value(name, 0);
    if (key.character == 0) {
        if (name.size() != 1)
            throw BadLine(QStringLiteral("'%1' is no key; there are up, down, left, right, escape, "
                                         "menu and single characters")
                              .arg(shortened(name)));
        key.character = name[0].unicode();
    }
    key.modifierFlags = line.modifiers();
    return key;
}

ScriptCommand readMenu(LineReader &line)
{
    MenuCommand menu;
    menu.titles << line.quotedText("the row's title");
    if (line.peek() == QStringLiteral(">") && !line.nextIsQuoted()) {
        line.text(">");
        menu.titles << line.quotedText("the row's title");
    }
    return menu;
}

ScriptCommand readRotation(LineReader &line)
{
    RotationCommand rotation;
    rotation.degrees = line.number("ANGLE");
    rotation.x = line.number("X");
    rotation.y = line.number("Y");
    rotation.z = line.number("Z");
    return rotation;
}

ScriptCommand readZoom(LineReader &line)
{
    ZoomCommand zoom;
    if (line.peek() == QStringLiteral("fit")) {
        line.text("fit");
        return zoom;
    }
    zoom.box = {line.number("LEFT"), line.number("RIGHT"), line.number("BOTTOM"),
                line.number("TOP")};
    const auto &[left, right, bottom, top] = *zoom.box;
    if (left >= right || bottom >= top) throw BadLine(QStringLiteral("the zoom box has no area"));
    return zoom;
}

CommandReader readerOfShow(bool shows)
{
    return [shows](LineReader &line) -> ScriptCommand {
        const QString name = line.text("the part");
        for (std::size_t i = 0; i < scenePartNames.size(); ++i) {
            if (name == QLatin1String(scenePartNames[i]))
                return ShowCommand{static_cast<kelo::ScenePart>(i), shows};
        }
        throw BadLine(QStringLiteral("the parts are upper-arch, lower-arch, gums, brackets, "
                                     "buttons and elastics, not '%1'")
                          .arg(name));
    };
}

ScriptCommand readResize(LineReader &line)
{
    const int width = line.wholeNumber(1, largestSide, "the width");
    const int height = line.wholeNumber(1, largestSide, "the height");
    return ResizeCommand{{static_cast<double>(width), static_cast<double>(height)}};
}

ScriptCommand readFullScreen(LineReader &line)
{
    const QString word = line.text("'on' or 'off'");
    if (word != QStringLiteral("on") && word != QStringLiteral("off"))
        throw BadLine(
            QStringLiteral("full screen is 'on' or 'off', not '%1'").arg(shortened(word)));
    return FullScreenCommand{word == QStringLiteral("on")};
}

const QHash<QString, CommandReader> &readers()
{
    static const QHash<QString, CommandReader> all = {
        {QStringLiteral("press"), readPress},
        {QStringLiteral("drag"), [](LineReader &line) { return DragCommand{line.point()}; }},
        {QStringLiteral("release"), [](LineReader &line) { return ReleaseCommand{line.point()}; }},
        {QStringLiteral("click"), readClick},
        {QStringLiteral("scroll"), readScroll},
        {QStringLiteral("key"), readKey},
        {QStringLiteral("modifiers"),
         [](LineReader &line) { return ModifiersCommand{line.modifiers()}; }},
        {QStringLiteral("menu"), readMenu},
        {QStringLiteral("dismiss"), [](LineReader &) { return DismissCommand{}; }},
        {QStringLiteral("date"),
         [](LineReader &line) { return DateCommand{line.dateOr(QStringLiteral("today"))}; }},
        {QStringLiteral("approve"),
         [](LineReader &line) { return ApproveCommand{line.dateOr(QStringLiteral("none"))}; }},
        {QStringLiteral("advance"),
         [](LineReader &line) { return AdvanceCommand{line.seconds()}; }},
        {QStringLiteral("wait"), [](LineReader &line) { return WaitCommand{line.seconds()}; }},
        {QStringLiteral("repeat-interval"),
         [](LineReader &line) { return RepeatIntervalCommand{line.number("SECONDS")}; }},
        {QStringLiteral("mouth"),
         [](LineReader &line) { return MouthCommand{line.number("DEGREES")}; }},
        {QStringLiteral("rotation"), readRotation},
        {QStringLiteral("zoom"), readZoom},
        {QStringLiteral("show"), readerOfShow(true)},
        {QStringLiteral("hide"), readerOfShow(false)},
        {QStringLiteral("resize"), readResize},
        {QStringLiteral("fullscreen"), readFullScreen},
        {QStringLiteral("picture"),
         [](LineReader &line) { return PictureCommand{line.text("the file")}; }},
        {QStringLiteral("state"),
         [](LineReader &line) { return StateCommand{line.text("the file")}; }},
    };
    return all;
}

std::optional<ScriptCommand> readLine(const QString &text)
{
    LineReader line(wordsOf(text));
    if (line.atEnd()) return std::nullopt;
    const QString verb = line.text("the command");
    const auto reader = readers().constFind(verb);
    if (reader == readers().constEnd())
        throw BadLine(QStringLiteral("'%1' is no command").arg(shortened(verb)));
    const ScriptCommand command = (*reader)(line);
    line.end();
    return command;
}

/// Bytes that are no text would name another file than the one that is meant.
QString textOf(const QByteArray &bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(bytes);
    if (decoder.hasError()) throw BadLine(QStringLiteral("the line is not UTF-8"));
    return text;
}

} // namespace

ParsedScript parseScript(const QByteArray &text)
{
    ParsedScript script;
    int number = 0;
    for (const QByteArray &line : text.split('\n')) {
        ++number;
        try {
            if (const auto command = readLine(textOf(line)))
                script.lines.push_back({number, *command});
        } catch (const BadLine &problem) {
            if (script.problems.size() == mostProblems)
                ++script.furtherProblemCount;
            else
                script.problems << QStringLiteral("%1: %2").arg(QString::number(number),
                                                                QString::fromUtf8(problem.what()));
        }
    }
    return script;
}

} // namespace viewer
