// outputcheck FILE...: says which of the viewer's output files are not whole; status 1 if any is.
#include "tests/house/OutputCheck.h"

#include <cstdio>

int main(int argc, char **argv)
{
    if (argc < 2) {
        std::fputs("usage: outputcheck FILE...\n", stderr);
        return 2;
    }
    bool allWhole = true;
    for (int i = 1; i < argc; ++i) {
        const std::string problem = kelo::test::problemWithFile(argv[i]);
        if (problem.empty()) {
            std::printf("%s is whole\n", argv[i]);
            continue;
        }
        std::fprintf(stderr, "%s %s\n", argv[i], problem.c_str());
        allWhole = false;
    }
    return allWhole ? 0 : 1;
}
