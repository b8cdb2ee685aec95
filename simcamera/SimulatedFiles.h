// The files stored on the simulated camera and the SFNC file operations on them.
#ifndef SIMCAMERA_SIMULATEDFILES_H
#define SIMCAMERA_SIMULATEDFILES_H

#include <cstdint>
#include <string>
#include <vector>

namespace SimCamera {

class CSimulatedFiles {
public:
    // File indices follow the FileSelector entries; the last one (Firmware) can never be opened.
    enum EFile { UserSet1 = 0, UserSet2 = 1, DeviceLog = 2, Firmware = 3, FileCount = 4 };
    enum EOperation { Open = 0, Close = 1, Read = 2, Write = 3, Delete = 4 };
    enum EOpenMode { ReadMode = 0, WriteMode = 1, ReadWriteMode = 2 };

    // The outcome of one operation: success and the number of bytes moved.
    struct SResult {
        bool success;
        uint32_t count;
    };

    CSimulatedFiles();

    // Performs an operation; reads fill `buffer`, writes take their bytes from it.
    SResult execute(uint32_t file, uint32_t operation, uint32_t mode, uint32_t offset, uint32_t length,
                    std::vector<uint8_t>& buffer);

    uint32_t size(uint32_t file) const;
    const std::string& content(uint32_t file) const;
    void setContent(uint32_t file, const std::string& content);

private:
    SResult open(uint32_t file, uint32_t mode);
    SResult read(uint32_t file, uint32_t offset, uint32_t length, std::vector<uint8_t>& buffer) const;
    SResult write(uint32_t file, uint32_t offset, uint32_t length, const std::vector<uint8_t>& buffer);

    struct SFile {
        std::string content;
        bool open = false;
        uint32_t mode = ReadMode;
    };
    SFile m_Files[FileCount];
};

}  // namespace SimCamera

#endif
