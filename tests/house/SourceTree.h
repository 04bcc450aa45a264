#pragma once

#include <string>
#include <vector>

namespace kelo::test {

/// Paths of all files of the source tree, relative to its root, sorted, written with '/'. What is
/// made by building or running (build/, out/) and the private files of tools is left out.
std::vector<std::string> sourceFiles();

/// Whether the tree holds a file or folder of this name, relative to its root.
bool existsInSourceTree(const std::string &path);

/// The content of a file of the tree.
std::string contentOfSourceFile(const std::string &path);

bool contains(const std::vector<std::string> &list, const std::string &wanted);

std::vector<std::string> linesOf(const std::string &text);

bool startsWith(const std::string &text, const std::string &start);
bool endsWith(const std::string &text, const std::string &end);

} // namespace kelo::test
