// The largest camera description beside the checkout (flir_blackfly_s_pge_19s4m.xml, about 1 MB) over a
// memory port: loading and connecting it against the simulated camera's description, a write once every
// node has been read (the state a GUI or the decoupler leaves a node map in) against a write on a fresh
// map, the collection's getAllParameter against GenApi's own walk over the same nodes, and every node's
// properties. Skipped when the description is absent.
#include "MemoryDescriptions.h"
#include <QSharedPointer>
#include <SimulatedCamera.h>
#include <benchmark/benchmark.h>
#include <parametercollection/ObjectState.h>
#include <parametercollection/ParameterCollection.h>
#include <parametercollection/ParameterPath.h>

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

// Load and connect are timed; taking the map down again is not.
void load(benchmark::State& state, const std::string& xml) {
    for (auto _ : state) {
        std::unique_ptr<SLoaded> loaded(new SLoaded(xml));
        state.PauseTiming();
        loaded.reset();
        state.ResumeTiming();
    }
    state.SetLabel(std::to_string(xml.size()) + " bytes");
}

void LoadSimulatedCamera(benchmark::State& state) {
    load(state, SimCamera::CSimulatedCamera::description());
}

void LoadLargestDescription(benchmark::State& state) {
    if (!available(state))
        return;
    load(state, fileText(largest));
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

// Times a walk over every node of the largest description; perNode answers how many things it counted at
// a node, and the label gives their sum.
template <typename PerNode>
void walkEveryNode(benchmark::State& state, const char* counted, PerNode perNode) {
    if (!available(state))
        return;
    SLoaded loaded(fileText(largest));
    size_t count = 0;
    for (auto _ : state) {
        GenApi::NodeList_t nodes;
        loaded.map._GetNodes(nodes);
        count = 0;
        for (GenApi::INode* node : nodes)
            count += perNode(node);
    }
    state.SetLabel(std::to_string(count) + counted);
}

// What a GenApi client does to list the nodes: every node, asked for its name, value interface and access.
void RawFeatureWalk(benchmark::State& state) {
    walkEveryNode(state, " implemented values", [](GenApi::INode* node) -> size_t {
        benchmark::DoNotOptimize(node->GetName());
        return dynamic_cast<GenApi::IValue*>(node) && GenApi::IsImplemented(node) ? 1 : 0;
    });
}

// Every parameter of the collection: made on the first call (Arg 0, a fresh collection each time), handed
// out from the cache on later calls (Arg 1).
void AllParameters(benchmark::State& state) {
    using namespace ParameterCollection;
    if (!available(state))
        return;
    SLoaded loaded(fileText(largest));
    auto makeCollection = [&] {
        QSharedPointer<CObjectState> objectState(new CObjectState(nullptr));
        auto collection = std::make_unique<CParameterCollection>(objectState);
        collection->announceNodeMap(ParameterPath::CameraDevice);
        collection->attachNodeMap(ParameterPath::CameraDevice, loaded.map._Ptr);
        objectState->setState(ObjectState_Open);
        return std::make_pair(objectState, std::move(collection));
    };
    auto kept = makeCollection();
    kept.second->getAllParameter();
    int count = 0;
    for (auto _ : state) {
        if (state.range(0) == 0) {
            auto fresh = makeCollection();
            count = fresh.second->getAllParameter().size();
            state.PauseTiming();
            fresh.second->detachAllNodeMaps();
            fresh.second.reset();
            state.ResumeTiming();
        } else {
            count = kept.second->getAllParameter().size();
        }
    }
    kept.second->detachAllNodeMaps();
    state.SetLabel(std::to_string(count) +
                   (state.range(0) ? " parameters, again" : " parameters, first call"));
}

// Every property of every node, names and values, as a tool that shows a node's details asks for them;
// RawFeatureWalk is the walk over the same nodes without them.
void AllProperties(benchmark::State& state) {
    walkEveryNode(state, " properties", [](GenApi::INode* node) -> size_t {
        GENICAM_NAMESPACE::gcstring_vector names;
        node->GetPropertyNames(names);
        for (size_t i = 0; i < names.size(); ++i) {
            GENICAM_NAMESPACE::gcstring value, attribute;
            node->GetProperty(names[i], value, attribute);
        }
        return names.size();
    });
}

}  // namespace

BENCHMARK(AllProperties)->Unit(benchmark::kMillisecond);
BENCHMARK(RawFeatureWalk)->Unit(benchmark::kMillisecond);
BENCHMARK(AllParameters)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadSimulatedCamera)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadLargestDescription)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteInteger)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);
BENCHMARK_MAIN();
