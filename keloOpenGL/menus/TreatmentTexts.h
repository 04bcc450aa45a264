#pragma once

#include "platform/presenters/Menu.h"

#include <string>

namespace kelo {

/// The format with the value in place of its first "%@"; a format without one as it is.
std::string filled(const std::string &format, const std::string &value);

/// A text of the treatment view in the user's language: what the application's translators give for
/// it in the context "DXOpenGL", or the text itself. Mark the texts with
/// QT_TRANSLATE_NOOP("DXOpenGL", ...). A text may hold one "%@", and its translation then has one.
std::string translated(const char *text);

/// Titles a row with a text of the treatment view: the title is the text, the shown title its
/// translation, both with the value in place of "%@".
void setTitle(MenuItem &item, const char *text, const std::string &value = {});

} // namespace kelo
