// What the name catalogue costs every unit that includes it: constructing and destroying one unit's copies
// of all its constants, against constructing as many plain strings from literals in the same run.
#include <benchmark/benchmark.h>
#include <parametercollection/ParameterNames.h>

using namespace ParameterCollection;

namespace {

// One unit's static initialisation and destruction of the catalogue, done in a function so that it repeats.
void constructCatalogue() {
#define PARAMETERCOLLECTION_CATALOGUE_NAME(Namespace, Type, Identifier, Path) \
    {                                                                         \
        const Type Namespace##_##Identifier(QStringLiteral(Path));            \
        benchmark::DoNotOptimize(&Namespace##_##Identifier);                  \
    }
#include <parametercollection/ParameterNameCatalogueEntries.inc>
#undef PARAMETERCOLLECTION_CATALOGUE_NAME
}

// The baseline: the same number of strings, each constructed from its literal and destroyed.
void constructStrings() {
#define PARAMETERCOLLECTION_CATALOGUE_NAME(Namespace, Type, Identifier, Path) \
    {                                                                         \
        const QString Namespace##_##Identifier(QStringLiteral(Path));         \
        benchmark::DoNotOptimize(&Namespace##_##Identifier);                  \
    }
#include <parametercollection/ParameterNameCatalogueEntries.inc>
#undef PARAMETERCOLLECTION_CATALOGUE_NAME
}

void BM_CatalogueOfOneUnit(benchmark::State& state) {
    for (auto _ : state)
        constructCatalogue();
}
BENCHMARK(BM_CatalogueOfOneUnit)->Unit(benchmark::kMicrosecond);

void BM_BaselineLiteralStrings(benchmark::State& state) {
    for (auto _ : state)
        constructStrings();
}
BENCHMARK(BM_BaselineLiteralStrings)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
