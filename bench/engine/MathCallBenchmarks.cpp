// Cost of one call of each maths-library function the engine uses, at double
// precision with arguments in the ranges the voices give them. These set the
// floor of the engine's cost: compare with the calls per sample of the whole
// kit (see KitDriver.cpp). Calls are independent of each other, so this is the
// throughput of the function, not its latency.

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>

namespace
{
constexpr size_t argumentCount = 1024;

std::array<double, argumentCount> spread(double from, double to)
{
    std::array<double, argumentCount> values{};
    for (size_t i = 0; i < argumentCount; ++i)
    {
        // A scrambled order, so that branch predictors see no pattern.
        const size_t j = (i * 389) % argumentCount;
        values[j] = from + (to - from) * (double) i / (double) (argumentCount - 1);
    }
    return values;
}

template <typename Function>
void callEach(benchmark::State& state, Function function, double from, double to)
{
    const auto arguments = spread(from, to);
    for (auto _ : state)
    {
        for (double x : arguments)
        {
            double y = function(x);
            benchmark::DoNotOptimize(y);
        }
    }
    state.counters["perCall"] = benchmark::Counter((double) argumentCount, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// The bends of the metal voices and the shapers: wide arguments.
void BM_Exp(benchmark::State& state)
{
    callEach(
        state, [](double x)
        { return std::exp(x); },
        -20.0, 20.0);
}

// Tunings, 2 sin(pi f / sr): small arguments.
void BM_Sin(benchmark::State& state)
{
    callEach(
        state, [](double x)
        { return std::sin(x); },
        0.001, 0.5);
}

// The clap's burst shaper, (E - 0.2) 6.
void BM_Tanh(benchmark::State& state)
{
    callEach(
        state, [](double x)
        { return std::tanh(x); },
        -1.2, 1.2);
}

// The maracas' high-pass design, tan(pi f / sr).
void BM_Tan(benchmark::State& state)
{
    callEach(
        state, [](double x)
        { return std::tan(x); },
        0.1, 1.2);
}

void BM_Cos(benchmark::State& state)
{
    callEach(
        state, [](double x)
        { return std::cos(x); },
        0.001, 0.5);
}

// The decay curve, 0.0625^x.
void BM_Pow(benchmark::State& state)
{
    callEach(
        state, [](double x)
        { return std::pow(0.0625, x); },
        0.0, 1.0);
}

// The loop alone, for the overhead included in the figures above.
void BM_Identity(benchmark::State& state)
{
    callEach(
        state, [](double x)
        { return x; },
        0.0, 1.0);
}
} // namespace

BENCHMARK(BM_Exp);
BENCHMARK(BM_Sin);
BENCHMARK(BM_Tanh);
BENCHMARK(BM_Tan);
BENCHMARK(BM_Cos);
BENCHMARK(BM_Pow);
BENCHMARK(BM_Identity);
