// Chunk payloads and event messages fuzzed: the first byte picks a GenApi adapter (GigE Vision, USB3 Vision,
// IIDC or listed chunks; GigE Vision, USB3 Vision, Camera Link, IIDC or named events), the rest is what a
// camera sent; then every chunk and event feature of the simulated camera's description is read.
#include <GenApi/GenApi.h>
#include <GenApi/ChunkAdapterDcam.h>
#include <GenApi/ChunkAdapterGEV.h>
#include <GenApi/ChunkAdapterGeneric.h>
#include <GenApi/ChunkAdapterU3V.h>
#include <GenApi/EventAdapter1394.h>
#include <GenApi/EventAdapterCL.h>
#include <GenApi/EventAdapterGEV.h>
#include <GenApi/EventAdapterGeneric.h>
#include <GenApi/EventAdapterU3V.h>
#include <SimulatedCamera.h>
#include <cstdint>
#include <cstring>
#include <vector>

namespace {

const char* const features[] = {"ChunkFrameID",
                                "ChunkTimestamp",
                                "ChunkExposureTime",
                                "ChunkWidth",
                                "ChunkHeight",
                                "ChunkPixelFormat",
                                "ChunkCRC",
                                "EventExposureEnd",
                                "EventExposureEndTimestamp",
                                "EventExposureEndFrameID",
                                "EventFrameStartTimestamp",
                                "EventFrameStartFrameID"};

void readFeatures(GenApi::INodeMap* map) {
    for (const char* name : features) {
        try {
            GenApi::CValuePtr value = map->GetNode(name);
            if (value.IsValid() && GenApi::IsReadable(value))
                value->ToString();
        } catch (const GenICam::GenericException&) {
        }
    }
}

// Listed chunks: each 12 bytes of the input name an ID, an offset and a length into the rest.
void attachListed(GenApi::INodeMap* map, uint8_t* data, size_t size) {
    std::vector<GenApi::SingleChunkData_t> chunks;
    const size_t count = std::min<size_t>(size / 12, 8);
    for (size_t i = 0; i < count; ++i) {
        uint32_t words[3];
        std::memcpy(words, data + 12 * i, sizeof words);
        chunks.push_back({0x1000u + (words[0] & 0xF), static_cast<ptrdiff_t>(words[1] % (size + 1)),
                          static_cast<size_t>(words[2] % (size + 1))});
    }
    // Only chunks inside the buffer: the caller vouches for the list, as GenApi expects.
    std::vector<GenApi::SingleChunkData_t> inside;
    for (const GenApi::SingleChunkData_t& chunk : chunks)
        if (static_cast<size_t>(chunk.ChunkOffset) + chunk.ChunkLength <= size)
            inside.push_back(chunk);
    GenApi::CChunkAdapterGeneric adapter(map);
    adapter.AttachBuffer(data, inside.data(), static_cast<int64_t>(inside.size()));
    readFeatures(map);
}

template <typename TAdapter>
void attachChunks(GenApi::INodeMap* map, uint8_t* data, size_t size) {
    TAdapter adapter(map);
    if (adapter.CheckBufferLayout(data, static_cast<int64_t>(size)))
        adapter.AttachBuffer(data, static_cast<int64_t>(size));
    readFeatures(map);
}

template <typename TAdapter>
void deliverEvent(GenApi::INodeMap* map, uint8_t* data, size_t size) {
    TAdapter adapter(map);
    adapter.DeliverMessage(data, static_cast<uint32_t>(size));
    readFeatures(map);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size) {
    static SimCamera::CSimulatedCamera camera;
    static GenApi::CNodeMapRef map = [] {
        GenApi::CNodeMapRef loaded;
        loaded._LoadXMLFromString(SimCamera::CSimulatedCamera::description().c_str());
        loaded._Connect(&camera, "Device");
        return loaded;
    }();
    if (size < 1)
        return 0;
    std::vector<uint8_t> bytes(input + 1, input + size);
    uint8_t* data = bytes.empty() ? nullptr : bytes.data();
    try {
        switch (input[0] % 9) {
            case 0:
                attachChunks<GenApi::CChunkAdapterGEV>(map._Ptr, data, bytes.size());
                break;
            case 1:
                attachChunks<GenApi::CChunkAdapterU3V>(map._Ptr, data, bytes.size());
                break;
            case 2:
                attachChunks<GenApi::CChunkAdapterDcam>(map._Ptr, data, bytes.size());
                break;
            case 3:
                attachListed(map._Ptr, data, bytes.size());
                break;
            case 4:
                deliverEvent<GenApi::CEventAdapterGEV>(map._Ptr, data, bytes.size());
                break;
            case 5:
                deliverEvent<GenApi::CEventAdapterU3V>(map._Ptr, data, bytes.size());
                break;
            case 6:
                deliverEvent<GenApi::CEventAdapterCL>(map._Ptr, data, bytes.size());
                break;
            case 7:
                deliverEvent<GenApi::CEventAdapter1394>(map._Ptr, data, bytes.size());
                break;
            default: {
                GenApi::CEventAdapterGeneric adapter(map._Ptr);
                adapter.DeliverMessage(data, static_cast<uint32_t>(bytes.size()), uint64_t(0x9001));
                readFeatures(map._Ptr);
            }
        }
    } catch (const GenICam::GenericException&) {
    }
    return 0;
}
