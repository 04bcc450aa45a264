#include "tools/lightbake/CommandLine.h"

#include <iostream>

int main(int argumentCount, char **arguments)
{
    return kelo::runLightbake({arguments + 1, arguments + argumentCount}, std::cout, std::cerr);
}
