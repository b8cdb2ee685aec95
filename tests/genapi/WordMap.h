// Descriptions written in a test, loaded over a register space of words the test fills.
#ifndef TESTS_GENAPI_WORDMAP_H
#define TESTS_GENAPI_WORDMAP_H

#include <GenApi/GenApi.h>
#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <map>
#include <string>

namespace {

using namespace GenApi;

// A register space of 32-bit little-endian words that a test fills; longer transfers span several words.
class CWordPort : public CPortImpl {
public:
    EAccessMode GetAccessMode() const override { return RW; }
    void Read(void* buffer, int64_t address, int64_t length) override {
        ++reads;
        uint8_t* bytes = static_cast<uint8_t*>(buffer);
        for (int64_t offset = 0; offset < length; offset += 4) {
            const uint32_t word = words[address + offset];
            std::memcpy(bytes + offset, &word, std::min<size_t>(4, static_cast<size_t>(length - offset)));
        }
    }
    void Write(const void* buffer, int64_t address, int64_t length) override {
        const uint8_t* bytes = static_cast<const uint8_t*>(buffer);
        for (int64_t offset = 0; offset < length; offset += 4) {
            uint32_t word = 0;
            std::memcpy(&word, bytes + offset, std::min<size_t>(4, static_cast<size_t>(length - offset)));
            words[address + offset] = word;
        }
    }
    std::map<int64_t, uint32_t> words;
    int reads = 0;
};

inline std::string description(const std::string& nodes) {
    return R"(<?xml version="1.0" encoding="utf-8"?>
<RegisterDescription xmlns="http://www.genicam.org/GenApi/Version_1_1" ModelName="Rules" VendorName="Test"
    StandardNameSpace="None" SchemaMajorVersion="1" SchemaMinorVersion="1" SchemaSubMinorVersion="0"
    MajorVersion="1" MinorVersion="0" SubMinorVersion="0" ProductGuid="11111111-2222-3333-4444-555555555555"
    VersionGuid="11111111-2222-3333-4444-666666666666">
)" + nodes +
           R"(
  <Port Name="Device"/>
</RegisterDescription>
)";
}

inline std::string intReg(const char* name, int address, const char* extra = "", int length = 4) {
    return std::string("<IntReg Name=\"") + name + "\"><Address>" + std::to_string(address) +
           "</Address><Length>" + std::to_string(length) +
           "</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>" + extra +
           "<Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>\n";
}

// A description of the given nodes loaded over a word port.
struct SWordMap {
    explicit SWordMap(const std::string& nodes) {
        map._LoadXMLFromString(description(nodes).c_str());
        map._Connect(&port, "Device");
    }
    // Puts words in the register space behind GenApi's back, then lets the map read them afresh.
    void load(std::initializer_list<std::pair<const int64_t, uint32_t>> words) {
        for (const auto& word : words)
            port.words[word.first] = word.second;
        map._InvalidateNodes();
    }
    CNodeMapRef map;
    CWordPort port;
};

}  // namespace

#endif
