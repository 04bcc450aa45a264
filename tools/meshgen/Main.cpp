#include "tools/meshgen/Report.h"
#include "tools/meshgen/SampleMeshes.h"

#include <cstdio>
#include <exception>
#include <fstream>
#include <iostream>
#include <string>
#include <string_view>

namespace {

constexpr const char *usage =
    "Usage: meshgen --output DIR --parameters DIR [--report FILE]\n"
    "Makes the sample patient's 86 OBJ files in the output folder from hooks.csv in the "
    "parameters\n"
    "folder. --report writes the sizes, contacts and anchor distances of the result to FILE.\n";

} // namespace

int main(int argc, char **argv)
{
    std::string output;
    std::string parameters;
    std::string reportPath;
    for (int i = 1; i < argc; ++i) {
        const std::string_view option = argv[i];
        std::string *value = nullptr;
        if (option == "--output")
            value = &output;
        else if (option == "--parameters")
            value = &parameters;
        else if (option == "--report")
            value = &reportPath;
        if (option == "--help") {
            std::cout << usage;
            return 0;
        }
        if (!value || i + 1 >= argc) {
            std::cerr << usage;
            return 2;
        }
        *value = argv[++i];
    }
    if (output.empty() || parameters.empty()) {
        std::cerr << usage;
        return 2;
    }
    try {
        const auto patient = kelo::meshgen::makeSamplePatient(parameters);
        kelo::meshgen::writeMeshes(patient, output);
        if (!reportPath.empty()) {
            std::ofstream file(reportPath);
            file << kelo::meshgen::report(patient, parameters);
            if (!file.flush()) {
                std::cerr << "meshgen: Cannot write \"" << reportPath << "\"\n";
                return 1;
            }
        }
    } catch (const std::exception &error) {
        std::cerr << "meshgen: " << error.what() << "\n";
        return 1;
    }
    return 0;
}
