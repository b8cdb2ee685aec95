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

// Who holds control of the device behind a node map that openAravisDevice made. A GigE Vision device is
// controlled by one application at a time: opened while another holds it, its features can be read but
// not written (the device port answers RO); once it stops answering its heartbeat it is lost (the port
// answers NA and no kept value is served). Other devices and maps answer NotApplicable.
enum class EDeviceControl { NotApplicable, Controlling, ControlledElsewhere, Lost };
GENAPI_DECL EDeviceControl deviceControl(GenApi::INodeMap* map);

}  // namespace GenApiEngine

#endif
