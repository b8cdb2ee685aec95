// In-memory files with open/close/read/write/delete as a device's file access would perform them.
#include "SimulatedFiles.h"
#include <algorithm>

namespace SimCamera {

CSimulatedFiles::CSimulatedFiles() {
    m_Files[UserSet1].content = "Width\t640\nHeight\t480\nPixelFormat\tMono8\n";
    m_Files[DeviceLog].content = "boot: sensor ready\nboot: link up\n";
}

CSimulatedFiles::SResult CSimulatedFiles::execute(uint32_t file, uint32_t operation, uint32_t mode,
                                                  uint32_t offset, uint32_t length,
                                                  std::vector<uint8_t>& buffer) {
    if (file >= Firmware)
        return {false, 0};
    switch (operation) {
        case Open:
            return open(file, mode);
        case Close:
            if (!m_Files[file].open)
                return {false, 0};
            m_Files[file].open = false;
            return {true, 0};
        case Read:
            return read(file, offset, length, buffer);
        case Write:
            return write(file, offset, length, buffer);
        case Delete:
            if (m_Files[file].open)
                return {false, 0};
            m_Files[file].content.clear();
            return {true, 0};
        default:
            return {false, 0};
    }
}

CSimulatedFiles::SResult CSimulatedFiles::open(uint32_t file, uint32_t mode) {
    if (m_Files[file].open || mode > ReadWriteMode)
        return {false, 0};
    if (file == DeviceLog && mode != ReadMode)
        return {false, 0};
    m_Files[file].open = true;
    m_Files[file].mode = mode;
    if (mode == WriteMode)
        m_Files[file].content.clear();
    return {true, 0};
}

CSimulatedFiles::SResult CSimulatedFiles::read(uint32_t file, uint32_t offset, uint32_t length,
                                               std::vector<uint8_t>& buffer) const {
    const SFile& f = m_Files[file];
    if (!f.open || f.mode == WriteMode)
        return {false, 0};
    const uint32_t available =
        offset < f.content.size() ? static_cast<uint32_t>(f.content.size()) - offset : 0;
    const uint32_t count = std::min({length, available, static_cast<uint32_t>(buffer.size())});
    std::copy_n(f.content.begin() + offset, count, buffer.begin());
    return {true, count};
}

CSimulatedFiles::SResult CSimulatedFiles::write(uint32_t file, uint32_t offset, uint32_t length,
                                                const std::vector<uint8_t>& buffer) {
    SFile& f = m_Files[file];
    if (!f.open || f.mode == ReadMode)
        return {false, 0};
    const uint32_t count = std::min(length, static_cast<uint32_t>(buffer.size()));
    if (f.content.size() < offset + count)
        f.content.resize(offset + count, '\0');
    std::copy_n(buffer.begin(), count, f.content.begin() + offset);
    return {true, count};
}

uint32_t CSimulatedFiles::size(uint32_t file) const {
    return file < FileCount ? static_cast<uint32_t>(m_Files[file].content.size()) : 0;
}

const std::string& CSimulatedFiles::content(uint32_t file) const {
    return m_Files[file % FileCount].content;
}

void CSimulatedFiles::setContent(uint32_t file, const std::string& content) {
    if (file < FileCount)
        m_Files[file].content = content;
}

}  // namespace SimCamera
