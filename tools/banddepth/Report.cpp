#include "tools/banddepth/Report.h"

#include "keloOpenGL/bands/RubberBandTables.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <ostream>
#include <set>
#include <string>
#include <utility>

namespace kelo::banddepth {
namespace {

constexpr std::size_t worstListed = 20;

using Findings = std::vector<Finding>;

/// As printf writes it; the report's numbers must not depend on the stream's locale or state.
[[gnu::format(printf, 1, 2)]] std::string formatted(const char *format, ...)
{
    char text[256];
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    return text;
}

class Report
{
public:
    Report(const Scene &scene, const std::vector<Band> &bands, const Findings &findings,
           std::ostream &out)
        : _scene(scene), _bands(bands), _findings(findings), _out(out)
    {}

    void write() const
    {
        const auto ofTables = static_cast<std::size_t>(std::count_if(
            _bands.begin(), _bands.end(), [](auto &band) { return band.isOfTables; }));
        _out << "bands: " << ofTables << " of the tables, " << _bands.size() - ofTables
             << " named configurations; meshes: " << _scene.obstacles.size() << '\n'
             << "Depths and lengths of a band's centre line inside a mesh, in millimetres.\n";
        if (ofTables != 0) writeTable("Bands of the tables", true);
        if (ofTables != _bands.size()) writeTable("Named configurations", false);
        writeWorst("Worst of the tables' bands in teeth, mouth closed", [this](const Finding &f) {
            return f.angle == 0 && kindOf(f) == Kind::tooth && _bands[f.band].isOfTables;
        });
        writeAnchors();
        writeWorst("Worst of all, each band and mesh at its worst angle",
                   [](const Finding &) { return true; });
    }

private:
    Kind kindOf(const Finding &finding) const { return _scene.obstacles[finding.obstacle].kind; }

    std::string bandOf(const Finding &finding) const
    {
        return _bands[finding.band].name + (finding.isStraight ? ", no anchor" : "");
    }

    template<class Condition>
    Findings findingsWhere(Condition condition) const
    {
        Findings chosen;
        std::copy_if(_findings.begin(), _findings.end(), std::back_inserter(chosen), condition);
        std::stable_sort(chosen.begin(), chosen.end(),
                         [](const Finding &one, const Finding &other) {
                             return one.immersion.depth > other.immersion.depth;
                         });
        return chosen;
    }

    void writeTable(const char *title, bool ofTables) const
    {
        _out << '\n'
             << title << " (over: deeper than " << formatted("%.1f", noticedDepth) << ")\n"
             << formatted("%6s  %-8s%7s%8s%7s%7s  %s\n", "angle", "kind", "worst", "length",
                          "bands", "over", "worst band, mesh");
        for (const int angle : measuredAngles)
            for (const Kind kind : allKinds)
                writeRow(angle, kind, ofTables);
    }

    /// `bands` counts each band once, however many meshes of the kind it runs into.
    void writeRow(int angle, Kind kind, bool ofTables) const
    {
        const Findings row = findingsWhere([&](const Finding &finding) {
            return finding.angle == angle && kindOf(finding) == kind &&
                   _bands[finding.band].isOfTables == ofTables;
        });
        double length = 0.0;
        std::set<std::size_t> inside, over;
        for (const Finding &finding : row) {
            length += finding.immersion.length;
            inside.insert(finding.band);
            if (finding.immersion.depth > noticedDepth) over.insert(finding.band);
        }
        _out << formatted("%+6d  %-8s%7.3f%8.1f%7zu%7zu", angle, nameOf(kind),
                          row.empty() ? 0.0 : row[0].immersion.depth, length, inside.size(),
                          over.size());
        if (!row.empty())
            _out << "  " << bandOf(row[0]) << "; " << _scene.obstacles[row[0].obstacle].name;
        _out << '\n';
    }

    template<class Condition>
    void writeWorst(const char *title, Condition condition) const
    {
        _out << '\n'
             << title << '\n'
             << formatted("%7s%8s%7s  %-11s%-24s  %s\n", "depth", "length", "angle", "mesh",
                          "at, in its jaw's space", "band");
        std::set<std::pair<std::size_t, std::size_t>> listed;
        for (const Finding &finding : findingsWhere(condition)) {
            if (listed.size() == worstListed) break;
            if (!listed.emplace(finding.band, finding.obstacle).second) continue;
            const auto &[depth, length, at] = finding.immersion;
            _out << formatted("%7.3f%8.1f%+7d  %-11s(%6.2f, %6.2f, %6.2f)  %s\n", depth, length,
                              finding.angle, _scene.obstacles[finding.obstacle].name.c_str(), at.x,
                              at.y, at.z, bandOf(finding).c_str());
        }
        if (listed.empty()) _out << "   none\n";
    }

    void writeAnchors() const
    {
        _out << "\nAnchors inside teeth, mouth closed\n"
             << formatted("%7s  %-11s%s\n", "depth", "tooth", "anchor");
        const std::vector<AnchorFinding> inside = anchorsInTeeth(_scene);
        for (const AnchorFinding &finding : inside)
            _out << formatted("%7.3f  %-11s%zu, %s jaw\n", finding.depth,
                              _scene.obstacles[finding.obstacle].name.c_str(), finding.anchor,
                              anchors()[finding.anchor].isUpperJaw ? "upper" : "lower");
        if (inside.empty()) _out << "   none\n";
    }

    const Scene &_scene;
    const std::vector<Band> &_bands;
    const Findings &_findings;
    std::ostream &_out;
};

} // namespace

double worstInToothAtClosedMouth(const Scene &scene, const std::vector<Band> &bands,
                                 const Findings &findings)
{
    double worst = 0.0;
    for (const Finding &finding : findings)
        if (finding.angle == 0 && bands[finding.band].isOfTables &&
            scene.obstacles[finding.obstacle].kind == Kind::tooth)
            worst = std::max(worst, finding.immersion.depth);
    return worst;
}

void writeReport(const Scene &scene, const std::vector<Band> &bands, const Findings &findings,
                 std::ostream &out)
{
    Report(scene, bands, findings, out).write();
}

} // namespace kelo::banddepth
