#pragma once

#include "tests/viewer/script/RandomScriptScene.h"

#include <QByteArray>

#include <cstdint>
#include <random>

namespace viewer::test {

/// Writes scripts at random, a line at a time, each out of what can be done at that moment: rows of
/// the open menu, drags while a button is held, members of the elastic that is being strung. The
/// same seed on the same scene gives the same script, on every computer.
class RandomScriptGenerator
{
public:
    explicit RandomScriptGenerator(std::uint64_t seed) : random_(seed) {}

    /// A line that is right as text. It may name an object that cannot be clicked now; such a line
    /// fails when it is played, and the next one is asked for.
    QByteArray nextLine(const RandomScriptScene &scene);

private:
    /// Plain remainders: the distributions of the standard library differ between its versions.
    std::uint64_t below(std::uint64_t count) { return random_() % count; }
    bool oneIn(std::uint64_t count) { return below(count) == 0; }
    template<class List>
    const auto &oneOf(const List &list)
    {
        return list[below(std::size(list))];
    }

    QByteArray lineWithMenu(const RandomScriptScene &scene);
    QByteArray lineWithButton(const RandomScriptScene &scene);
    QByteArray anyLine(const RandomScriptScene &scene);
    QByteArray objectClick(const RandomScriptScene &scene);
    QByteArray mouseLine(const RandomScriptScene &scene);
    QByteArray timeLine(const RandomScriptScene &scene);
    QByteArray viewLine();
    QByteArray keyLine();
    QByteArray point(const RandomScriptScene &scene);
    QByteArray modifiers(std::uint64_t oneOutOf);
    QByteArray suffixes();
    QByteArray toothKey();

    std::mt19937_64 random_;
};

} // namespace viewer::test
