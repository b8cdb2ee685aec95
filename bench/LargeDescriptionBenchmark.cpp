// The largest camera description beside the checkout (flir_blackfly_s_pge_19s4m.xml, about 1 MB) over a
// memory port: loading and connecting it against the simulated camera's description, and a write once
// every node has been read (the state a GUI or the decoupler leaves a node map in) against a write on a
// fresh map. Skipped when the description is absent.
#include "MemoryDescriptions.h"
#include <SimulatedCamera.h>
#include <benchmark/benchmark.h>

namespace {

const std::string largest = std::string(PC_CAMERA_DESCRIPTIONS) + "/flir_blackfly_s_pge_19s4m.xml";

struct SLoaded : SDescriptionInMemory {
    explicit SLoaded(const std::string& xml) : SDescriptionInMemory(xml, false) {}
    // Reads every readable value once.
    void readEverything() {
        GenApi::NodeList_t nodes;
        map._GetNodes(nodes);
        for (GenApi::INode* node : nodes) {
            GenApi::IValue* value = dynamic_cast<GenApi::IValue*>(node);
            try {
                if (value && GenApi::IsReadable(node))
                    value->ToString();
            } catch (const GenICam::GenericException&) {
            }
        }
    }
    // A writable integer whose current value it may write again.
    GenApi::IInteger* writableInteger() {
        GenApi::NodeList_t nodes;
        map._GetNodes(nodes);
        for (GenApi::INode* node : nodes) {
            GenApi::IInteger* integer = dynamic_cast<GenApi::IInteger*>(node);
            try {
                if (integer && GenApi::IsWritable(node) && node->IsFeature()) {
                    integer->SetValue(integer->GetValue());
                    return integer;
                }
            } catch (const GenICam::GenericException&) {
            }
        }
        return nullptr;
    }
};

bool available(benchmark::State& state) {
    if (std::ifstream(largest).good())
        return true;
    state.SkipWithError("the camera descriptions are absent");
    return false;
}

void LoadSimulatedCamera(benchmark::State& state) {
    const std::string xml = SimCamera::CSimulatedCamera::description();
    for (auto _ : state)
        SLoaded loaded(xml);
    state.SetLabel(std::to_string(xml.size()) + " bytes");
}

void LoadLargestDescription(benchmark::State& state) {
    if (!available(state))
        return;
    const std::string xml = fileText(largest);
    for (auto _ : state)
        SLoaded loaded(xml);
    state.SetLabel(std::to_string(xml.size()) + " bytes");
}

// Argument 0: on a fresh map; 1: once every node was read.
void WriteInteger(benchmark::State& state) {
    if (!available(state))
        return;
    SLoaded loaded(fileText(largest));
    GenApi::IInteger* integer = loaded.writableInteger();
    const int64_t value = integer->GetValue();
    if (state.range(0))
        loaded.readEverything();
    for (auto _ : state)
        integer->SetValue(value);
    state.SetLabel(std::string(integer->GetNode()->GetName().c_str()) +
                   (state.range(0) ? ", every node read" : ", fresh map"));
}

}  // namespace

BENCHMARK(LoadSimulatedCamera)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadLargestDescription)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteInteger)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);
BENCHMARK_MAIN();
