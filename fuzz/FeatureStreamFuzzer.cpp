// Arbitrary text as a feature stream, loaded into the simulated camera with verification.
#include <Base/GCException.h>
#include <SimulatedDevice.h>
#include <cstdint>
#include <tavrin/FeaturePersistence.h>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static SimCamera::CSimulatedDevice device;
    try {
        Tavrin::CFeaturePersistence::LoadFromString(
            GenICam::gcstring(reinterpret_cast<const char*>(data), size), device.nodeMap(), true);
    } catch (const GenICam::GenericException&) {
    }
    return 0;
}
