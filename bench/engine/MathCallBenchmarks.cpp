// Cost of one call of each maths-library function the voices call per sample,
// at double precision with arguments in the ranges the voices give them. These
// set the floor of the engine's cost: compare with the calls per sample of the
// whole kit (see KitDriver.cpp). Calls are independent of each other, so this
// is the throughput of the function, not its latency.

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>

namespace
{
constexpr size_t argumentCount = 1024;

void BM_MathCall(benchmark::State& state, double (*function)(double), double from, double to)
{
    std::array<double, argumentCount> arguments{};
    for (size_t i = 0; i < argumentCount; ++i) // scrambled, so that branch predictors see no pattern
        arguments[(i * 389) % argumentCount] = from + (to - from) * (double) i / (double) (argumentCount - 1);

    for (auto _ : state)
        for (double x : arguments)
        {
            double y = function(x);
            benchmark::DoNotOptimize(y);
        }
    state.counters["perCall"] = benchmark::Counter((double) argumentCount, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

double callExp(double x) { return std::exp(x); }
double callSin(double x) { return std::sin(x); }
double callTan(double x) { return std::tan(x); }
double callTanh(double x) { return std::tanh(x); }
} // namespace

BENCHMARK_CAPTURE(BM_MathCall, exp, callExp, -20.0, 20.0); // the metal bends and the shapers
BENCHMARK_CAPTURE(BM_MathCall, sin, callSin, 0.001, 0.5);  // tunings, 2 sin(pi f / sr)
BENCHMARK_CAPTURE(BM_MathCall, tanh, callTanh, -1.2, 1.2); // the clap's burst shaper
BENCHMARK_CAPTURE(BM_MathCall, tan, callTan, 0.1, 1.2);    // the maracas' high-pass design
