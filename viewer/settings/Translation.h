#pragma once

class QLocale;

namespace viewer {

/// Gives the application the texts of a language, those of Qt's own dialogs too, where there are
/// any: German and Spanish; everything else has English. Once, before the first window.
void installTranslations(const QLocale &locale);

} // namespace viewer
