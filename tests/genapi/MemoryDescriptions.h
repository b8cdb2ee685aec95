// Real camera descriptions over register spaces in memory, for the tests and benchmarks that read them:
// the descriptions beside the checkout, a memory port, and a description with every port connected to one.
#ifndef TESTS_GENAPI_MEMORYDESCRIPTIONS_H
#define TESTS_GENAPI_MEMORYDESCRIPTIONS_H

#include <GenApi/GenApi.h>
#include <algorithm>
#include <cstdint>
#include <dirent.h>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

// A register space in memory: bytes never written read as zero, or, when seeded, as the pseudo-random
// bytes the GenApi conformance kit's answers were made over.
class CMemoryPort : public GenApi::CPortImpl {
public:
    explicit CMemoryPort(bool seeded = false) : m_Seeded(seeded) {}
    GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }
    void Read(void* buffer, int64_t address, int64_t length) override {
        for (int64_t i = 0; i < length; ++i)
            static_cast<uint8_t*>(buffer)[i] = byteAt(static_cast<uint64_t>(address + i));
    }
    void Write(const void* buffer, int64_t address, int64_t length) override {
        for (int64_t i = 0; i < length; ++i)
            m_Written[address + i] = static_cast<const uint8_t*>(buffer)[i];
    }

private:
    static uint64_t mix64(uint64_t x) {
        uint64_t z = x + 0x9E3779B97F4A7C15ULL;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
        return z ^ (z >> 31);
    }
    uint8_t byteAt(uint64_t address) const {
        const auto written = m_Written.find(static_cast<int64_t>(address));
        if (written != m_Written.end())
            return written->second;
        if (!m_Seeded)
            return 0;
        return static_cast<uint8_t>(mix64(1 ^ (address >> 3)) >> (8 * (address & 7)));
    }
    bool m_Seeded;
    std::map<int64_t, uint8_t> m_Written;
};

// The names (without ".xml") of the descriptions in a folder, sorted; empty when the folder is absent.
inline std::vector<std::string> describedCameras(const std::string& folder) {
    std::vector<std::string> names;
    if (DIR* directory = opendir(folder.c_str())) {
        while (dirent* entry = readdir(directory)) {
            const std::string file = entry->d_name;
            if (file.size() > 4 && file.compare(file.size() - 4, 4, ".xml") == 0)
                names.push_back(file.substr(0, file.size() - 4));
        }
        closedir(directory);
    }
    std::sort(names.begin(), names.end());
    return names;
}

// The paths of the descriptions in each folder, folder by folder; empty when none is there.
inline std::vector<std::string> describedCameraPaths(const std::vector<std::string>& folders) {
    std::vector<std::string> paths;
    for (const std::string& folder : folders) {
        for (const std::string& name : describedCameras(folder))
            paths.push_back(folder + "/" + name + ".xml");
    }
    return paths;
}

// A description's name: its file name without folder and ".xml".
inline std::string describedCameraName(const std::string& path) {
    const size_t slash = path.find_last_of('/');
    const std::string file = slash == std::string::npos ? path : path.substr(slash + 1);
    return file.size() > 4 ? file.substr(0, file.size() - 4) : file;
}

inline std::string fileText(const std::string& path) {
    std::ifstream file(path);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

// A description loaded with every port connected to a memory register space of its own.
struct SDescriptionInMemory {
    SDescriptionInMemory(const std::string& xml, bool seeded) {
        map._LoadXMLFromString(GENICAM_NAMESPACE::gcstring(xml.c_str(), xml.size()));
        GenApi::NodeList_t nodes;
        map._GetNodes(nodes);
        for (GenApi::INode* node : nodes) {
            if (node->GetPrincipalInterfaceType() != GenApi::intfIPort)
                continue;
            ports.emplace_back(new CMemoryPort(seeded));
            map._Connect(ports.back().get(), node->GetName());
        }
    }
    GenApi::CNodeMapRef map;
    std::vector<std::unique_ptr<CMemoryPort>> ports;
};

#endif
