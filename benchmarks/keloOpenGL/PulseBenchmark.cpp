// The twenty frames of the pulse that answers a click of the stringing, beside the same twenty
// drawn whole.

#include "platform/gl.h"

#include "benchmarks/keloOpenGL/SampleScene.h"
#include "viewer/treatment/TreatmentLoader.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <vector>

namespace {

constexpr std::size_t frameCount = 20;

/// A view that can be told to draw every frame whole, and notes how many models it left out.
class PulseView : public kelo::DXOpenGL
{
public:
    using DXOpenGL::DXOpenGL;

    /// Sixteen bits a colour, for buffers may have more than eight.
    std::vector<unsigned short> pixels() const
    {
        const kelo::PixelSize size = deviceSize();
        std::vector<unsigned short> read(static_cast<std::size_t>(size.width) * size.height * 4);
        glReadPixels(0, 0, size.width, size.height, GL_RGBA, GL_UNSIGNED_SHORT, read.data());
        return read;
    }

    bool drawsWholeFrames = false;
    std::vector<std::vector<unsigned short>> *film = nullptr;

protected:
    void willDrawPicture() override
    {
        if (!drawsWholeFrames) DXOpenGL::willDrawPicture();
    }
    void didDrawPicture() override
    {
        if (!drawsWholeFrames) DXOpenGL::didDrawPicture();
        if (film) film->push_back(pixels());
    }
};

std::shared_ptr<PulseView> makePulseView(const benchmark::State &state)
{
    kelo::OpenGLView::setSurfaceKind(kelo::SurfaceKind::Surfaceless);
    auto view = kelo::makeView<PulseView>(kelo::Rect{
        {0.0, 0.0}, {static_cast<double>(state.range(0)), static_cast<double>(state.range(1))}});
    view->setDocumentModel(viewer::samplePatientDocument());
    view->display();
    glFinish();
    return view;
}

std::vector<std::vector<unsigned short>> filmOfPulse(PulseView &view, bool inWholeFrames)
{
    std::vector<std::vector<unsigned short>> film;
    view.drawsWholeFrames = inWholeFrames;
    view.film = &film;
    view.signalElasticsPlacement("8");
    view.film = nullptr;
    return film;
}

void pulse(benchmark::State &state, bool inWholeFrames)
{
    const auto view = makePulseView(state);
    view->drawsWholeFrames = inWholeFrames;
    for (auto _ : state) {
        view->signalElasticsPlacement("8");
        glFinish();
    }
    const auto film = filmOfPulse(*view, inWholeFrames);
    if (film.size() != frameCount || film.front() == film[frameCount / 2 - 1])
        state.SkipWithError("nothing pulses");
    if (film != filmOfPulse(*view, !inWholeFrames))
        state.SkipWithError("the frames are not those that are drawn whole");
}

void pulseInWholeFrames(benchmark::State &state)
{
    pulse(state, true);
}

void pulseOfView(benchmark::State &state)
{
    pulse(state, false);
}

void sizes(benchmark::internal::Benchmark *row)
{
    row->Args({800, 600})->Args({1600, 1000});
    bare::withSpread(row);
}

BENCHMARK(pulseInWholeFrames)->Apply(sizes);
BENCHMARK(pulseOfView)->Apply(sizes);

} // namespace
