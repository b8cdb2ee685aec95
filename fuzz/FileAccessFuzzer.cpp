// The device side of file access fuzzed: a port that serves the simulated camera's registers but answers
// the file operation's status, result and buffer with fuzzed bytes, under a file parameter and streams.
#include <GenApi/GenApi.h>
#include <GenApi/Filestream.h>
#include <SimulatedCamera.h>
#include <SimulatedCameraRegisters.h>
#include <cstdint>
#include <cstring>
#include <vector>

namespace {

class CFuzzedFilePort : public GenApi::CPortImpl {
public:
    GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }
    void Read(void* buffer, int64_t address, int64_t length) override {
        m_Camera.Read(buffer, address, length);
        // Status, result, size and the buffer come from the fuzzer's bytes while they last.
        if ((address >= 0x0518 && address < 0x0540) || (address >= 0x0600 && address < 0x0700)) {
            uint8_t* bytes = static_cast<uint8_t*>(buffer);
            for (int64_t i = 0; i < length && m_Next < m_Data.size(); ++i)
                bytes[i] = m_Data[m_Next++];
        }
    }
    void Write(const void* buffer, int64_t address, int64_t length) override {
        m_Camera.Write(buffer, address, length);
    }
    void setData(const uint8_t* data, size_t size) {
        m_Data.assign(data, data + size);
        m_Next = 0;
    }

private:
    SimCamera::CSimulatedCamera m_Camera;
    std::vector<uint8_t> m_Data;
    size_t m_Next = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static CFuzzedFilePort port;
    static GenApi::CNodeMapRef map = [] {
        GenApi::CNodeMapRef loaded;
        loaded._LoadXMLFromString(SimCamera::CSimulatedCamera::description().c_str());
        loaded._Connect(&port, "Device");
        return loaded;
    }();
    port.setData(data, size);
    try {
        GenApi::IDevFileStream in(map._Ptr, "UserSet1");
        char chunk[512];
        while (in.read(chunk, sizeof chunk) || in.gcount() > 0) {
        }
        in.close();
        GenApi::ODevFileStream out(map._Ptr, "UserSet2");
        out.write(reinterpret_cast<const char*>(data),
                  static_cast<std::streamsize>(std::min<size_t>(size, 600)));
        out.close();
    } catch (const GenICam::GenericException&) {
    }
    return 0;
}
