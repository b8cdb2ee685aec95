// The largest camera description beside the checkout (flir_blackfly_s_pge_19s4m.xml, about 1 MB) over a
// memory port: loading and connecting it against the simulated camera's description, and a write once
// every node has been read (the state a GUI or the decoupler leaves a node map in) against a write on a
// fresh map. Skipped when the description is absent.
#include <GenApi/GenApi.h>
#include <SimulatedCamera.h>
#include <benchmark/benchmark.h>
#include <cstring>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>

namespace {

const std::string largest = std::string(PC_CAMERA_DESCRIPTIONS) + "/flir_blackfly_s_pge_19s4m.xml";

std::string fileText(const std::string& path) {
    std::ifstream file(path);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

// A register space in memory whose bytes read as zero until written.
class CMemoryPort : public GenApi::CPortImpl {
public:
    GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }
    void Read(void* buffer, int64_t address, int64_t length) override {
        for (int64_t i = 0; i < length; ++i) {
            const auto written = m_Bytes.find(address + i);
            static_cast<uint8_t*>(buffer)[i] = written == m_Bytes.end() ? 0 : written->second;
        }
    }
    void Write(const void* buffer, int64_t address, int64_t length) override {
        for (int64_t i = 0; i < length; ++i)
            m_Bytes[address + i] = static_cast<const uint8_t*>(buffer)[i];
    }

private:
    std::map<int64_t, uint8_t> m_Bytes;
};

struct SLoaded {
    explicit SLoaded(const std::string& xml) {
        map._LoadXMLFromString(xml.c_str());
        GenApi::NodeList_t nodes;
        map._GetNodes(nodes);
        for (GenApi::INode* node : nodes) {
            if (node->GetPrincipalInterfaceType() == GenApi::intfIPort) {
                ports.emplace_back(new CMemoryPort());
                map._Connect(ports.back().get(), node->GetName());
            }
        }
    }
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
    GenApi::CNodeMapRef map;
    std::vector<std::unique_ptr<CMemoryPort>> ports;
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
