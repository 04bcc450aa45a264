#pragma once

#include <QString>

namespace viewer {

/// How many characters of a text from elsewhere a message repeats.
inline constexpr qsizetype mostShownCharacters = 80;

/// A piece of a file or of a command line as a message repeats it: of a long text the beginning,
/// followed by "…". Always one line: what would steer a terminal, line breaks included, is written
/// out as in terminalText. `mostCharacters` counts before that.
QString shortened(const QString &text, qsizetype mostCharacters = mostShownCharacters);

/// A message as a terminal takes it: characters that would steer it (control characters but for the
/// line feed, and those that turn the direction of writing) appear as "\x1b" or "\u202e".
QString terminalText(const QString &message);

/// One line (or several) on standard error, for people, as terminalText has it.
void tellUser(const QString &message);

} // namespace viewer
