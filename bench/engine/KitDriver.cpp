// The whole kit ringing at once, as a small program for instruction-level
// profilers: it triggers all seventeen voices and renders `frames` frames in
// renderKit, optionally after some warm-up frames. Counting the maths-library
// calls per sample, for example:
//
//   valgrind --tool=callgrind --toggle-collect='*renderKit*' build/bench/engine/quindrel_kit_driver 44100 4410
//   callgrind_annotate --tree=caller callgrind.out.<pid>
//
// and dividing the "(Nx)" call counts of exp, sin, tanh... by the frames. The
// toggle limits the instruction counts to renderKit, but callgrind counts calls
// over the whole run, so leave the warm-up at 0 for call counts.
//
// Arguments: sample rate (44100), frames to render (4410), warm-up frames (0).

#include "engine/QuindrelCore.h"

#include <array>
#include <cstdio>
#include <cstdlib>

namespace
{
using Frame = std::array<double, DrumMachineCore::numInstruments>;

__attribute__((noinline)) double renderKit(QuindrelCore& core, long frames)
{
    Frame frame{};
    double sum = 0.0;
    for (long i = 0; i < frames; ++i)
    {
        core.renderFrame(frame.data());
        for (double y : frame)
            sum += y;
    }
    return sum;
}
} // namespace

int main(int argc, char** argv)
{
    const float sampleRate = argc > 1 ? (float) std::atof(argv[1]) : 44100.0f;
    const long frames = argc > 2 ? std::atol(argv[2]) : 4410;
    const long warmUp = argc > 3 ? std::atol(argv[3]) : 0;

    QuindrelCore core;
    core.setSampleRate(sampleRate);
    for (int id = 0; id <= 58; ++id)
        core.setParameter(id, id < DrumMachineCore::numInstruments || id == 58 ? 1.0f : 0.5f);

    // The closed hat first, so that it does not choke the open one.
    for (int voice = DrumMachineCore::numInstruments - 1; voice >= 0; --voice)
        core.trigger(voice, 1.0f);
    Frame frame{};
    for (long i = 0; i < warmUp; ++i)
        core.renderFrame(frame.data());

    const double sum = renderKit(core, frames);

    int sounding = 0;
    for (int voice = 0; voice < DrumMachineCore::numInstruments; ++voice)
        sounding += core.getInstrument(voice).isActive() ? 1 : 0;
    std::printf("%ld frames at %.0f Hz, %d voices still sounding, sum %g\n", frames, (double) sampleRate, sounding, sum);
    return 0;
}
