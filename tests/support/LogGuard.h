#pragma once

#include <string>

namespace kelo::test {

/// Makes every Qt warning that a test did not announce a failure of that test.
void installLogGuard();

/// Announces one Qt warning that the running test expects; it must come before the test ends.
/// `part` is a piece of the warning's text.
void expectQtWarning(const std::string &part);

/// Fails the running test for announced warnings that did not come, and forgets them.
void checkExpectedQtWarnings();

} // namespace kelo::test
