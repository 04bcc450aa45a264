#include "tools/meshcheck/CommandLine.h"

#include <iostream>

int main(int argumentCount, char **arguments)
{
    return kelo::runMeshcheck({arguments + 1, arguments + argumentCount}, std::cout, std::cerr);
}
