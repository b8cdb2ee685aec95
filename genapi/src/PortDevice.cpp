// GObject subclass of ArvDevice that turns memory access into IPort::Read and IPort::Write calls.
#include "PortDevice.h"
#include <Base/GCException.h>
#include <map>

namespace {

struct PortState {
    GenApi::IPort* port = nullptr;
    // Ports of tagged addresses, by tag; the tag sits at bit `shift` and above (0: no tags).
    std::map<int, GenApi::IPort*> tagged;
    int shift = 0;
    GenApiEngine::CRegisterCache* cache = nullptr;
    // Write lists that record the writes each port takes.
    std::map<GenApi::IPort*, GenApi::IPortWriteList*> recorders;
    std::exception_ptr lastError;
};

}  // namespace

G_BEGIN_DECLS
#define GENAPI_ENGINE_TYPE_PORT_DEVICE (genapi_engine_port_device_get_type())
G_DECLARE_FINAL_TYPE(GenApiEnginePortDevice, genapi_engine_port_device, GENAPI_ENGINE, PORT_DEVICE, ArvDevice)
G_END_DECLS

struct _GenApiEnginePortDevice {
    ArvDevice parent_instance;
    PortState* state;
};

G_DEFINE_TYPE(GenApiEnginePortDevice, genapi_engine_port_device, ARV_TYPE_DEVICE)

namespace {

PortState* stateOf(ArvDevice* device) {
    return GENAPI_ENGINE_PORT_DEVICE(device)->state;
}

// The port an address belongs to, with the address as that port knows it.
GenApi::IPort* portOf(PortState* state, int64_t& address) {
    if (state->shift == 0)
        return state->port;
    const int tag = static_cast<int>(static_cast<uint64_t>(address) >> state->shift);
    if (tag == 0)
        return state->port;
    address &= (int64_t(1) << state->shift) - 1;
    const auto found = state->tagged.find(tag);
    return found == state->tagged.end() ? nullptr : found->second;
}

// Runs one transfer and turns an exception of the port into an Aravis error, keeping the exception.
template <typename Transfer>
gboolean transfer(ArvDevice* device, int64_t address, GError** error, Transfer call) {
    PortState* state = stateOf(device);
    state->lastError = nullptr;
    GenApi::IPort* port = portOf(state, address);
    if (!port) {
        g_set_error(error, ARV_DEVICE_ERROR, ARV_DEVICE_ERROR_NOT_CONNECTED, "no port is connected");
        return FALSE;
    }
    try {
        call(port, address);
        return TRUE;
    } catch (const GenICam::GenericException& e) {
        state->lastError = std::current_exception();
        g_set_error(error, ARV_DEVICE_ERROR, ARV_DEVICE_ERROR_TRANSFER_ERROR, "%s", e.GetDescription());
    } catch (const std::exception& e) {
        state->lastError = std::current_exception();
        g_set_error(error, ARV_DEVICE_ERROR, ARV_DEVICE_ERROR_TRANSFER_ERROR, "%s", e.what());
    }
    return FALSE;
}

gboolean readMemory(ArvDevice* device, guint64 address, guint32 size, void* buffer, GError** error) {
    GenApiEngine::CRegisterCache* cache = stateOf(device)->cache;
    const int64_t start = static_cast<int64_t>(address);
    int64_t local = start;
    if (cache && portOf(stateOf(device), local) && cache->read(start, size, buffer))
        return TRUE;
    const gboolean done = transfer(
        device, start, error, [&](GenApi::IPort* port, int64_t local) { port->Read(buffer, local, size); });
    if (done && cache)
        cache->afterRead(start, size, buffer);
    return done;
}

gboolean writeMemory(ArvDevice* device, guint64 address, guint32 size, void* buffer, GError** error) {
    GenApiEngine::CRegisterCache* cache = stateOf(device)->cache;
    const int64_t start = static_cast<int64_t>(address);
    PortState* state = stateOf(device);
    const gboolean done = transfer(device, start, error, [&](GenApi::IPort* port, int64_t local) {
        port->Write(buffer, local, size);
        const auto recorder = state->recorders.find(port);
        if (recorder != state->recorders.end())
            recorder->second->Write(buffer, local, size);
    });
    if (cache) {
        if (done)
            cache->afterWrite(start, size, buffer);
        else
            cache->invalidate(start, size);
    }
    return done;
}

gboolean readRegister(ArvDevice* device, guint64 address, guint32* value, GError** error) {
    return readMemory(device, address, sizeof(guint32), value, error);
}

gboolean writeRegister(ArvDevice* device, guint64 address, guint32 value, GError** error) {
    return writeMemory(device, address, sizeof(guint32), &value, error);
}

void finalize(GObject* object) {
    delete GENAPI_ENGINE_PORT_DEVICE(object)->state;
    G_OBJECT_CLASS(genapi_engine_port_device_parent_class)->finalize(object);
}

}  // namespace

static void genapi_engine_port_device_init(GenApiEnginePortDevice* self) {
    self->state = new PortState();
}

static void genapi_engine_port_device_class_init(GenApiEnginePortDeviceClass* klass) {
    GObjectClass* objectClass = G_OBJECT_CLASS(klass);
    ArvDeviceClass* deviceClass = ARV_DEVICE_CLASS(klass);
    objectClass->finalize = finalize;
    deviceClass->read_memory = readMemory;
    deviceClass->write_memory = writeMemory;
    deviceClass->read_register = readRegister;
    deviceClass->write_register = writeRegister;
}

namespace GenApiEngine {

ArvDevice* createPortDevice() {
    return ARV_DEVICE(g_object_new(GENAPI_ENGINE_TYPE_PORT_DEVICE, NULL));
}

void setDevicePort(ArvDevice* device, GenApi::IPort* port) {
    stateOf(device)->port = port;
}

void setTagShift(ArvDevice* device, int shift) {
    stateOf(device)->shift = shift;
}

void setTaggedPort(ArvDevice* device, int tag, GenApi::IPort* port) {
    stateOf(device)->tagged[tag] = port;
}

void setDeviceCache(ArvDevice* device, CRegisterCache* cache) {
    stateOf(device)->cache = cache;
}

void setPortRecorder(ArvDevice* device, GenApi::IPort* port, GenApi::IPortWriteList* list) {
    if (list)
        stateOf(device)->recorders[port] = list;
    else
        stateOf(device)->recorders.erase(port);
}

bool isPortDevice(ArvDevice* device) {
    return GENAPI_ENGINE_IS_PORT_DEVICE(device);
}

std::exception_ptr takePortError(ArvDevice* device) {
    if (!isPortDevice(device))
        return nullptr;
    std::exception_ptr error = stateOf(device)->lastError;
    stateOf(device)->lastError = nullptr;
    return error;
}

}  // namespace GenApiEngine
