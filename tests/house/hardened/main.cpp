// Mistakes, each behind a name: none of them may pass unnoticed.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <vector>

int main(int argc, char **argv)
{
    const std::string_view mistake = argc > 1 ? argv[1] : "";
    // Not known to the compiler, which would warn.
    const auto argumentCount = static_cast<std::size_t>(argc);
    if (mistake == "index") {
        const std::vector<int> numbers(argumentCount - 1);
        std::printf("%d\n", numbers[argumentCount]);
    } else if (mistake == "overflow" && argc > 2) {
        char text[8];
        std::strcpy(text, argv[2]);
        std::puts(text);
    } else if (mistake == "cast" && argc > 2) {
        std::printf("%d\n", static_cast<int>(std::strtod(argv[2], nullptr)));
    }
    return 0;
}
