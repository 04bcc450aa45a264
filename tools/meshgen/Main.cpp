#include "tools/meshgen/PatientMeshes.h"
#include "tools/meshgen/Report.h"

#include <cstdio>
#include <exception>
#include <fstream>
#include <iostream>
#include <string>
#include <string_view>

namespace {

constexpr const char *usage =
    "Usage: meshgen --output DIR --tables DIR --patient FILE [--report FILE]\n"
    "Makes a patient's 86 OBJ files in the output folder: the teeth from the patient's file, "
    "brackets\n"
    "and buttons where hooks.csv in the tables' folder has them. --report writes sizes, contacts, "
    "bite\n"
    "and anchor distances of the result to FILE.\n";

} // namespace

int main(int argc, char **argv)
{
    std::string output;
    std::string tables;
    std::string patientFile;
    std::string reportPath;
    for (int i = 1; i < argc; ++i) {
        const std::string_view option = argv[i];
        std::string *value = nullptr;
        if (option == "--output")
            value = &output;
        else if (option == "--tables")
            value = &tables;
        else if (option == "--patient")
            value = &patientFile;
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
    if (output.empty() || tables.empty() || patientFile.empty()) {
        std::cerr << usage;
        return 2;
    }
    try {
        const auto patient = kelo::meshgen::makePatient(tables, patientFile);
        kelo::meshgen::writeMeshes(patient, output);
        if (!reportPath.empty()) {
            std::ofstream file(reportPath);
            file << kelo::meshgen::report(patient, tables);
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
