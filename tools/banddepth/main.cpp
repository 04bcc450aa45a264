#include "tools/banddepth/CommandLine.h"

#include <iostream>

int main(int argumentCount, char **arguments)
{
    return kelo::runBanddepth({arguments + 1, arguments + argumentCount}, std::cout, std::cerr);
}
