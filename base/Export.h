#pragma once

/// KELO_EXPORT marks what the library gives to a host: classes that have code or a virtual table,
/// and functions that are not inline. Everything without it is hidden in the shared library and
/// cannot be linked from outside, so that it may change from version to version. In the static
/// library the mark has no effect.
#define KELO_EXPORT __attribute__((visibility("default")))
