// Node maps over the devices Aravis can open: real GigE Vision and USB3 Vision cameras and its fake camera.
#ifndef GENAPI_ENGINE_ARAVISDEVICES_H
#define GENAPI_ENGINE_ARAVISDEVICES_H

#include <GenApi/INodeMap.h>
#include <string>
#include <vector>

namespace GenApiEngine {

// The IDs of the devices Aravis finds now (its fake camera only when enabled).
GENAPI_DECL std::vector<std::string> listAravisDevices();

// What Aravis tells of a device it finds, for a person choosing one: empty texts where it tells nothing.
struct SAravisDevice {
    std::string id;
    std::string vendor;
    std::string model;
    std::string serialNumber;
    std::string address;   // the IP address of a GigE Vision device
    std::string protocol;  // "GigEVision", "USB3Vision", ...
};
GENAPI_DECL std::vector<SAravisDevice> describeAravisDevices();

// Opens a device by its Aravis ID and returns its node map, or throws GenICam::RuntimeException.
// The map owns the device: destroy it through GenApi::IDestroy (or hand it to a CNodeMapRef).
GENAPI_DECL GenApi::INodeMap* openAravisDevice(const std::string& deviceId,
                                               const GenICam::gcstring& deviceName = "Device");

// A node map over a fresh instance of Aravis' fake camera, which needs no network.
GENAPI_DECL GenApi::INodeMap* createAravisFakeDevice(const std::string& serialNumber = "GENAPI-FAKE",
                                                     const GenICam::gcstring& deviceName = "Device");

}  // namespace GenApiEngine

#endif
