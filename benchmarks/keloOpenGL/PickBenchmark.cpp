// What a click costs beside what a frame costs: a pick by a pass over the whole picture, by a pass
// that is scissored to the pixel, and by one that draws only models that may lie under it.

#include "platform/gl.h"

#include "keloOpenGL/keloOpenGL.h"
#include "keloOpenGL/picking/PickPass.h"
#include "viewer/treatment/TreatmentLoader.h"

#include <benchmark/benchmark.h>

#include <QDateTime>
#include <QFile>

#include <algorithm>
#include <memory>
#include <random>
#include <vector>

namespace {

using kelo::PixelSize;
using kelo::Point;

/// The treatment view with its picks taken apart.
class PickView : public kelo::DXOpenGL
{
public:
    using DXOpenGL::DXOpenGL;

    /// A pick without scissor and box: all pixels of the pass, or only the one at the point.
    std::vector<std::uint32_t> fullPass(PixelSize readSize, const Point &point = {})
    {
        openGLContext().makeCurrentContext();
        const kelo::OffscreenTarget::Binding binding(target_, deviceSize(), kelo::pickFormats());
        glPushAttrib(GL_ALL_ATTRIB_BITS);
        glDisable(GL_DITHER);
        glDepthMask(GL_TRUE);
        glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        updateModelView();
        setIsInColorPickMode(true);
        glDisable(GL_LIGHTING);
        drawContent();
        drawExtraContent();
        setIsInColorPickMode(false);
        const auto count = static_cast<std::size_t>(readSize.width) * readSize.height;
        std::vector<GLubyte> bytes(count * 4);
        glReadPixels(static_cast<int>(point.x), static_cast<int>(point.y), readSize.width,
                     readSize.height, GL_RGBA, GL_UNSIGNED_BYTE, bytes.data());
        glPopAttrib();
        std::vector<std::uint32_t> identifiers(count);
        for (std::size_t i = 0; i < count; ++i)
            identifiers[i] = bytes[i * 4] * 65536u + bytes[i * 4 + 1] * 256u + bytes[i * 4 + 2];
        return identifiers;
    }

    bool leavesOutModels = true;

protected:
    bool shouldDrawForColorSelection(const kelo::DXGLightweightModel &model,
                                     const kelo::Matrix &jawTransform) const override
    {
        return !leavesOutModels || DXOpenGL::shouldDrawForColorSelection(model, jawTransform);
    }

private:
    kelo::OffscreenTarget target_;
};

/// The sample patient with some elastics and the whole overlay, drawn twice.
std::shared_ptr<PickView> makePickView(const benchmark::State &state)
{
    kelo::OpenGLView::setSurfaceKind(kelo::SurfaceKind::Surfaceless);
    auto view = kelo::makeView<PickView>(kelo::Rect{
        {0.0, 0.0}, {static_cast<double>(state.range(0)), static_cast<double>(state.range(1))}});
    const auto document = viewer::samplePatientDocument();
    const auto size = std::make_shared<kelo::ElasticsSizeType>();
    size->elasticsColor = {0.9, 0.5, 0.2, 1.0};
    for (const std::vector<std::string> &keys :
         {std::vector<std::string>{"6", "27"}, {"11", "22"}, {"3", "30l", "29"}, {"14", "19"}})
        document->elasticModels().push_back(
            std::make_shared<kelo::ElasticModel>(nullptr, size, keys));
    view->setDocumentModel(document);
    const QDateTime today(QDate(2026, 11, 20), QTime(0, 0));
    view->setCurrentDate(today);
    view->setDisplayedDate(today);
    view->setMouthOpenAngle(20.0f);
    view->display();
    view->display();
    glFinish();
    return view;
}

/// A point on the jaws, where most has to be drawn, and what a whole pass shows there.
struct Sample
{
    Point point;
    std::uint32_t identifier;
};

std::vector<Sample> samplesOnTheJaws(PickView &view)
{
    const PixelSize size = view.deviceSize();
    const std::vector<std::uint32_t> picture = view.fullPass(size);
    std::mt19937 random(52u);
    std::uniform_int_distribution<int> column(0, size.width - 1), row(0, size.height - 1);
    std::vector<Sample> samples;
    while (samples.size() < 256) {
        const int x = column(random), y = row(random);
        const std::uint32_t identifier =
            picture[static_cast<std::size_t>(y) * static_cast<std::size_t>(size.width) +
                    static_cast<std::size_t>(x)];
        if (identifier != 0)
            samples.push_back({{static_cast<double>(x), static_cast<double>(y)}, identifier});
    }
    return samples;
}

void steadyFrame(benchmark::State &state)
{
    const auto view = makePickView(state);
    float degrees = 0.0f;
    for (auto _ : state) {
        degrees = degrees < 10.0f ? degrees + 0.5f : 0.0f;
        view->setWorldRotationAngle_axis(90.0 + degrees, -1.0, 0.0, 0.0);
        view->display();
        glFinish();
    }
}

template<class Pick>
void picks(benchmark::State &state, PickView &view, const Pick &pick)
{
    const std::vector<Sample> samples = samplesOnTheJaws(view);
    std::size_t next = 0;
    int wrongCount = 0;
    for (auto _ : state) {
        const Sample &sample = samples[next++ % samples.size()];
        wrongCount += pick(sample.point) == sample.identifier ? 0 : 1;
    }
    if (wrongCount > 0) state.SkipWithError("a pick read something else than the whole pass");
}

void pickByFullPass(benchmark::State &state)
{
    const auto view = makePickView(state);
    picks(state, *view, [&](const Point &point) { return view->fullPass({1, 1}, point).front(); });
}

void pickScissored(benchmark::State &state)
{
    const auto view = makePickView(state);
    view->leavesOutModels = false;
    picks(state, *view, [&](const Point &point) { return view->pickIdentifierAtPoint(point); });
}

void pick(benchmark::State &state)
{
    const auto view = makePickView(state);
    picks(state, *view, [&](const Point &point) { return view->pickIdentifierAtPoint(point); });
}

/// Along the arch, where most boxes lie one behind the other.
void pickFromTheSide(benchmark::State &state)
{
    const auto view = makePickView(state);
    view->setWorldRotationAngle_axis(120.0, -1.0, -1.0, -1.0);
    picks(state, *view, [&](const Point &point) { return view->pickIdentifierAtPoint(point); });
}

/// From the pick to the rows of the bracket menu, with their images and all of them validated: what
/// the presenter is handed.
void bracketMenuOpens(benchmark::State &state)
{
    const auto view = makePickView(state);
    const auto catalogue = kelo::ResourceBundle::bundleWithIdentifier(kelo::keloOpenGLBundleKey)
                               ->pathForResource_ofType("catalogue", "json");
    QFile file(QString::fromStdString(catalogue.value_or("")));
    if (!file.open(QIODevice::ReadOnly)) {
        state.SkipWithError("there is no catalogue");
        return;
    }
    const auto reading = kelo::catalogueFromJSON(file.readAll());
    kelo::DXDocumentModel::BracketColorTypes colors;
    for (const auto &type : reading.catalogue->bracketColorTypes)
        colors[type->typeID] = type;
    view->documentModel()->setAvailableBracketColorTypes(colors);
    std::size_t rowCount = 0;
    kelo::ContextMenuPresenter::setPresenter(
        [&rowCount](const std::shared_ptr<kelo::Menu> &menu, const kelo::Event &,
                    kelo::OpenGLView &) { rowCount = menu->items().size(); });
    view->setCurrentEventToothName("8");
    for (auto _ : state)
        view->displayBracketMenuForEvent(kelo::Event{});
    kelo::ContextMenuPresenter::setPresenter({});
    state.counters["rows"] = static_cast<double>(rowCount);
    if (rowCount < colors.size()) state.SkipWithError("the menu has too few rows");
}

/// A drag event and the frame that it asks for, beside steadyFrame.
void dragEventAndItsFrame(benchmark::State &state)
{
    const auto view = makePickView(state);
    view->setMouseMode(kelo::HVOGLBasicView::rotateMode);
    kelo::Event event;
    event.type = kelo::EventType::LeftMouseDown;
    event.locationInWindow = {5.0, 5.0};
    view->sendEvent(event);
    event.type = kelo::EventType::LeftMouseDragged;
    for (auto _ : state) {
        event.locationInWindow.x = event.locationInWindow.x < 20.0 ? 30.0 : 10.0;
        view->sendEvent(event);
        view->display();
        glFinish();
    }
}

void sizes(benchmark::internal::Benchmark *row)
{
    row->Args({800, 600})->Args({1600, 1000})->Unit(benchmark::kMillisecond)->UseRealTime();
    row->Repetitions(7)->ReportAggregatesOnly(true);
    row->ComputeStatistics("min", [](const std::vector<double> &values) {
        return *std::min_element(values.begin(), values.end());
    });
    row->ComputeStatistics("max", [](const std::vector<double> &values) {
        return *std::max_element(values.begin(), values.end());
    });
}

BENCHMARK(steadyFrame)->Apply(sizes);
BENCHMARK(pickByFullPass)->Apply(sizes);
BENCHMARK(pickScissored)->Apply(sizes);
BENCHMARK(pick)->Apply(sizes);
BENCHMARK(pickFromTheSide)->Apply(sizes);
BENCHMARK(bracketMenuOpens)->Apply(sizes);
BENCHMARK(dragEventAndItsFrame)->Apply(sizes);

} // namespace
