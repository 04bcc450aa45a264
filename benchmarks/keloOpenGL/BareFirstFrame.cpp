// Shows one frame of a scene file and ends: bare_first_frame SCENE WIDTH HEIGHT.

#include "benchmarks/keloOpenGL/BareProgram.h"

#include <cstdlib>
#include <unistd.h>

int main(int argc, char **argv)
{
    if (argc != 4) return 1;
    bare::Scene scene;
    bare::Program program(std::atoi(argv[2]), std::atoi(argv[3]));
    if (!program.isUsable() || !bare::readScene(argv[1], &scene)) return 2;
    program.upload(scene);
    program.draw(0.0f);
    // At once, as the other program does: taking things down is no part of a first frame.
    _exit(0);
}
