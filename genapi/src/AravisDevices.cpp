// Opening Aravis devices and wrapping them in engine node maps.
#include <GenApiEngine/AravisDevices.h>
#include "AravisLock.h"
#include "NodeMapImpl.h"
#include <arv.h>

namespace GenApiEngine {
namespace {

// A text Aravis may not have, as an empty one.
std::string textOr(const char* text) {
    return text ? text : "";
}

GenApi::INodeMap* wrap(ArvDevice* device, GError* error, const GenICam::gcstring& deviceName) {
    if (!device) {
        const std::string message = error && error->message ? error->message : "unknown device";
        if (error)
            g_error_free(error);
        throw RUNTIME_EXCEPTION("Cannot open the device: %s", message.c_str());
    }
    try {
        GenApi::INodeMap* map = CNodeMapImpl::createForDevice(device, deviceName);
        g_object_unref(device);
        return map;
    } catch (...) {
        g_object_unref(device);
        throw;
    }
}

}  // namespace

std::vector<std::string> listAravisDevices() {
    const std::lock_guard<std::mutex> listing(aravisLock());
    arv_update_device_list();
    std::vector<std::string> ids;
    const unsigned int count = arv_get_n_devices();
    for (unsigned int i = 0; i < count; ++i) {
        const char* id = arv_get_device_id(i);
        if (id)
            ids.push_back(id);
    }
    return ids;
}

std::vector<SAravisDevice> describeAravisDevices() {
    const std::lock_guard<std::mutex> listing(aravisLock());
    arv_update_device_list();
    std::vector<SAravisDevice> devices;
    const unsigned int count = arv_get_n_devices();
    for (unsigned int i = 0; i < count; ++i) {
        if (!arv_get_device_id(i))
            continue;
        devices.push_back({arv_get_device_id(i), textOr(arv_get_device_vendor(i)),
                           textOr(arv_get_device_model(i)), textOr(arv_get_device_serial_nbr(i)),
                           textOr(arv_get_device_address(i)), textOr(arv_get_device_protocol(i))});
    }
    return devices;
}

GenApi::INodeMap* openAravisDevice(const std::string& deviceId, const GenICam::gcstring& deviceName) {
    // Opening parses the device's description, and the map over it reads Aravis' document of it.
    const std::lock_guard<std::mutex> opening(aravisLock());
    GError* error = nullptr;
    ArvDevice* device = arv_open_device(deviceId.empty() ? nullptr : deviceId.c_str(), &error);
    return wrap(device, error, deviceName);
}

GenApi::INodeMap* createAravisFakeDevice(const std::string& serialNumber,
                                         const GenICam::gcstring& deviceName) {
    const std::lock_guard<std::mutex> opening(aravisLock());
    GError* error = nullptr;
    ArvDevice* device = arv_fake_device_new(serialNumber.c_str(), &error);
    return wrap(device, error, deviceName);
}

EDeviceControl deviceControl(GenApi::INodeMap* map) {
    const CNodeMapImpl* impl = dynamic_cast<const CNodeMapImpl*>(map);
    return impl ? impl->deviceControl() : EDeviceControl::NotApplicable;
}

}  // namespace GenApiEngine
