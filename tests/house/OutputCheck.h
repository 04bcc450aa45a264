#pragma once

#include <QByteArray>

#include <string>

namespace kelo::test {

/// Each tells in one sentence what is wrong with the content of an output file; empty when it is
/// whole.

/// A PNG that has its signature and its end, decodes, and shows something: at least one pixel in a
/// hundred differs from the pixel in the corner.
std::string problemWithPNG(const QByteArray &content);

/// A PDF that has its header, a page and its end mark.
std::string problemWithPDF(const QByteArray &content);

/// A scene of named groups with vertices and faces that ends with a whole line.
std::string problemWithOBJ(const QByteArray &content);

/// Reads a file and checks it as the ending of its name says.
std::string problemWithFile(const std::string &path);

} // namespace kelo::test
