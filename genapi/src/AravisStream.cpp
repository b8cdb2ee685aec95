// Aravis stream buffers as frames, and their chunk data through GenApi's chunk adapters.
#include <GenApi/GenApi.h>
#include <GenApi/ChunkAdapterGEV.h>
#include <GenApi/ChunkAdapterU3V.h>
#include <GenApi/Compatibility.h>
#include "NodeMapImpl.h"
#include "StreamFrames.h"
#include <atomic>

using namespace GENAPI_NAMESPACE;

namespace GenApiEngine {

namespace {

ArvDevice* aravisDeviceOf(INodeMap* map) {
    const CNodeMapImpl* impl = dynamic_cast<const CNodeMapImpl*>(map);
    return impl && impl->servedByDevice() ? impl->device() : nullptr;
}

// A packet socket does not see the stream of a camera on the loopback interface (a simulated GigE Vision
// camera); such a stream is received through an ordinary socket.
void receiveLoopbackThroughSockets(ArvDevice* device) {
    if (!ARV_IS_GV_DEVICE(device))
        return;
    ArvGvDevice* gv = ARV_GV_DEVICE(device);
    GSocketAddress* address = arv_gv_device_get_device_address(gv);
    const bool loopback = address && G_IS_INET_SOCKET_ADDRESS(address) &&
                          g_inet_address_get_is_loopback(
                              g_inet_socket_address_get_address(G_INET_SOCKET_ADDRESS(address)));
    if (loopback)
        arv_gv_device_set_stream_options(
            gv, static_cast<ArvGvStreamOption>(arv_gv_device_get_stream_options(gv) |
                                               ARV_GV_STREAM_OPTION_PACKET_SOCKET_DISABLED));
}

}  // namespace

EChunkLayout chunkLayoutOf(ArvDevice* device) {
    if (ARV_IS_GV_DEVICE(device))
        return EChunkLayout::GigEVision;
    if (ARV_IS_UV_DEVICE(device))
        return EChunkLayout::USB3Vision;
    return EChunkLayout::NoChunks;
}

SStreamFrame frameOf(const void* data, size_t size, ArvBufferStatus status, ArvBufferPayloadType type,
                     EChunkLayout transport) {
    SStreamFrame frame;
    frame.data = static_cast<uint8_t*>(const_cast<void*>(data));
    frame.size = static_cast<int64_t>(size);
    frame.complete = status == ARV_BUFFER_STATUS_SUCCESS && data != nullptr;
    const bool chunks = type == ARV_BUFFER_PAYLOAD_TYPE_CHUNK_DATA || type == ARV_BUFFER_PAYLOAD_TYPE_EXTENDED_CHUNK_DATA;
    frame.layout = chunks ? transport : EChunkLayout::NoChunks;
    return frame;
}

SStreamFrame frameOf(ArvBuffer* buffer, EChunkLayout transport) {
    size_t size = 0;
    const void* data = arv_buffer_get_data(buffer, &size);
    SStreamFrame frame =
        frameOf(data, size, arv_buffer_get_status(buffer), arv_buffer_get_payload_type(buffer), transport);
    frame.frameId = arv_buffer_get_frame_id(buffer);
    frame.timestamp = arv_buffer_get_timestamp(buffer);
    return frame;
}

std::unique_ptr<CChunkAdapter> createChunkAdapter(INodeMap* map) {
    ArvDevice* device = aravisDeviceOf(map);
    switch (device ? chunkLayoutOf(device) : EChunkLayout::NoChunks) {
        case EChunkLayout::GigEVision:
            return std::unique_ptr<CChunkAdapter>(new CChunkAdapterGEV(map));
        case EChunkLayout::USB3Vision:
            return std::unique_ptr<CChunkAdapter>(new CChunkAdapterU3V(map));
        default:
            return nullptr;
    }
}

bool attachFrameChunks(CChunkAdapter& adapter, const SStreamFrame& frame) {
    if (!frame.complete || frame.layout == EChunkLayout::NoChunks)
        return false;
    adapter.AttachBuffer(frame.data, frame.size);
    return true;
}

struct CAravisStream::SImpl {
    FFrame onFrame;
    EChunkLayout transport = EChunkLayout::NoChunks;
    ArvStream* stream = nullptr;
    std::atomic<uint64_t> complete{0};
    std::atomic<uint64_t> failed{0};

    // Runs on Aravis' stream thread: each filled buffer goes to the listener and back into the stream.
    static void callback(void* userData, ArvStreamCallbackType type, ArvBuffer* buffer) {
        SImpl* self = static_cast<SImpl*>(userData);
        if (type != ARV_STREAM_CALLBACK_TYPE_BUFFER_DONE || !buffer)
            return;
        ArvBuffer* done = arv_stream_try_pop_buffer(self->stream);
        if (!done)
            return;
        const SStreamFrame frame = frameOf(done, self->transport);
        ++(frame.complete ? self->complete : self->failed);
        try {
            self->onFrame(frame);
        } catch (...) {
            // A listener's failure must not end Aravis' thread; the frame counts as delivered.
        }
        arv_stream_push_buffer(self->stream, done);
    }
};

CAravisStream::CAravisStream(INodeMap* map, FFrame onFrame, int bufferCount) : m_Impl(new SImpl) {
    ArvDevice* device = aravisDeviceOf(map);
    if (!device)
        throw RUNTIME_EXCEPTION("The device behind this node map sends no stream");
    CIntegerPtr payloadSize = map->GetNode("PayloadSize");
    if (!payloadSize.IsValid() || !IsReadable(payloadSize))
        throw RUNTIME_EXCEPTION("The device has no readable PayloadSize: its frames cannot be received");
    const int64_t size = payloadSize->GetValue();
    if (size <= 0)
        throw RUNTIME_EXCEPTION("The device's PayloadSize is %" FMT_I64 "d", size);
    m_Impl->onFrame = std::move(onFrame);
    m_Impl->transport = chunkLayoutOf(device);
    receiveLoopbackThroughSockets(device);
    GError* error = nullptr;
    m_Impl->stream = arv_device_create_stream(device, &SImpl::callback, m_Impl.get(), &error);
    if (!m_Impl->stream) {
        const std::string message = error && error->message ? error->message : "unknown reason";
        if (error)
            g_error_free(error);
        throw RUNTIME_EXCEPTION("Cannot open the device's stream: %s", message.c_str());
    }
    for (int i = 0; i < bufferCount; ++i)
        arv_stream_push_buffer(m_Impl->stream, arv_buffer_new_allocate(static_cast<size_t>(size)));
}

CAravisStream::~CAravisStream() {
    // Unreferencing the stream stops and joins its thread.
    g_object_unref(m_Impl->stream);
}

uint64_t CAravisStream::completeFrames() const {
    return m_Impl->complete;
}

uint64_t CAravisStream::failedFrames() const {
    return m_Impl->failed;
}

}  // namespace GenApiEngine
