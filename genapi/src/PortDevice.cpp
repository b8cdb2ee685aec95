// GObject subclass of ArvDevice that turns memory access into IPort::Read and IPort::Write calls.
#include "PortDevice.h"
#include <Base/GCException.h>

namespace {

struct PortState {
    GenApi::IPort* port = nullptr;
    GenApiEngine::CRegisterCache* cache = nullptr;
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

// Runs one transfer and turns an exception of the port into an Aravis error, keeping the exception.
template <typename Transfer>
gboolean transfer(ArvDevice* device, GError** error, Transfer call) {
    PortState* state = stateOf(device);
    state->lastError = nullptr;
    if (!state->port) {
        g_set_error(error, ARV_DEVICE_ERROR, ARV_DEVICE_ERROR_NOT_CONNECTED, "no port is connected");
        return FALSE;
    }
    try {
        call(state->port);
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
    if (cache && stateOf(device)->port && cache->read(start, size, buffer))
        return TRUE;
    const gboolean done =
        transfer(device, error, [&](GenApi::IPort* port) { port->Read(buffer, start, size); });
    if (done && cache)
        cache->afterRead(start, size, buffer);
    return done;
}

gboolean writeMemory(ArvDevice* device, guint64 address, guint32 size, void* buffer, GError** error) {
    GenApiEngine::CRegisterCache* cache = stateOf(device)->cache;
    const int64_t start = static_cast<int64_t>(address);
    const gboolean done =
        transfer(device, error, [&](GenApi::IPort* port) { port->Write(buffer, start, size); });
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

void setDeviceCache(ArvDevice* device, CRegisterCache* cache) {
    stateOf(device)->cache = cache;
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
