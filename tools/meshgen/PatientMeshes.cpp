#include "tools/meshgen/PatientMeshes.h"

#include "tools/meshgen/BracketShape.h"
#include "tools/meshgen/ButtonShape.h"
#include "tools/meshgen/Gums.h"
#include "tools/meshgen/Relief.h"
#include "tools/meshgen/Simplify.h"

#include <exception>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <thread>

namespace kelo::meshgen {

namespace {

/// A frame costs by the triangle. These suffice for what each kind of tooth has to show.
constexpr std::size_t frontToothTriangles = 1900;
constexpr std::size_t premolarTriangles = 2500;
constexpr std::size_t molarTriangles = 3500;
constexpr std::size_t gumTriangles = 14000;

std::size_t triangleCount(int toothNumber)
{
    const int position = positionFromMidline(toothNumber);
    if (position <= 3) return frontToothTriangles;
    return position <= 5 ? premolarTriangles : molarTriangles;
}

/// Runs both tasks at the same time and passes on the first exception of either.
template<typename First, typename Second>
void runBoth(First first, Second second)
{
    std::exception_ptr failure;
    std::thread other([&] {
        try {
            second();
        } catch (...) {
            failure = std::current_exception();
        }
    });
    try {
        first();
    } catch (...) {
        other.join();
        throw;
    }
    other.join();
    if (failure) std::rethrow_exception(failure);
}

/// What a vertex of a tooth counts when triangles are saved: the root is hidden in the gum, and the
/// fissures and cusps of back teeth show more than their smooth walls.
std::vector<double> importanceOf(const Tooth &tooth)
{
    std::vector<double> importance;
    const bool isFrontTooth = tooth.anatomy.anterior;
    for (std::size_t i = 0; i < tooth.ownMesh.positions.size(); ++i) {
        const bool isOcclusal = !isFrontTooth && tooth.ownMesh.normals[i].z > 0.2;
        importance.push_back(tooth.ownMesh.positions[i].z < 0.0 ? 0.03 : isOcclusal ? 2.0 : 1.0);
    }
    return importance;
}

struct ToothSet
{
    Mesh tooth, bracket, button;
};

ToothSet makeSet(const Tooth &tooth, const HookTable &hooks)
{
    ToothSet set;
    const int number = tooth.placement.number;
    const std::string key = std::to_string(number);
    // Attachments are fitted to the surface that is drawn, not to the finer one it comes from.
    set.tooth = inJaw(simplified(tooth.ownMesh, triangleCount(number), importanceOf(tooth)),
                      tooth.placement);
    optimizeOrder(set.tooth);
    set.bracket = makeBracket(set.tooth, tooth.placement, hooks.at(key));
    set.button = makeButton(set.tooth, tooth.placement, hooks.at(key + "l"));
    optimizeOrder(set.bracket);
    optimizeOrder(set.button);
    return set;
}

} // namespace

Patient makePatient(const std::string &tables, const std::string &patientFile)
{
    const HookTable hooks = readHooks(tables + "/hooks.csv");
    Patient patient;
    patient.teeth = arrangeTeeth(hooks, readPatient(patientFile));
    const std::string reliefs = reliefPathOf(patientFile);
    if (std::filesystem::exists(reliefs)) carveAll(patient.teeth, readReliefs(reliefs));
    std::vector<ToothSet> sets(patient.teeth.size());
    Mesh upperGums;
    Mesh lowerGums;
    const std::size_t half = sets.size() / 2;
    const auto makeJaw = [&](bool upper) {
        for (std::size_t i = upper ? 0 : half; i < (upper ? half : sets.size()); ++i)
            sets[i] = makeSet(patient.teeth[i], hooks);
        Mesh &gums = upper ? upperGums : lowerGums;
        gums = simplified(makeGums(patient.teeth, upper), gumTriangles);
        optimizeOrder(gums);
    };
    runBoth([&] { makeJaw(true); }, [&] { makeJaw(false); });

    const auto number = [&](std::size_t i) {
        return std::to_string(patient.teeth[i].placement.number);
    };
    for (std::size_t i = 0; i < sets.size(); ++i)
        patient.meshes.push_back({"_tooth_" + number(i), std::move(sets[i].tooth)});
    for (std::size_t i = 0; i < sets.size(); ++i)
        patient.meshes.push_back({"bracket_" + number(i), std::move(sets[i].bracket)});
    for (std::size_t i = 0; i < sets.size(); ++i)
        patient.meshes.push_back({"button_" + number(i), std::move(sets[i].button)});
    patient.meshes.push_back({"_upper_gums", std::move(upperGums)});
    patient.meshes.push_back({"_lower_gums", std::move(lowerGums)});
    return patient;
}

void writeMeshes(const Patient &patient, const std::string &output)
{
    std::error_code failure;
    std::filesystem::create_directories(output, failure);
    if (failure) throw std::runtime_error("Cannot make \"" + output + "\": " + failure.message());
    for (const NamedMesh &named : patient.meshes) {
        std::string error;
        if (!writeOBJ(output + "/" + named.name + ".obj", named.mesh, &error))
            throw std::runtime_error(error);
    }
}

} // namespace kelo::meshgen
