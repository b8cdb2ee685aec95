// The open device-file stream of a file parameter: at most one of an input and an output stream.
#ifndef PARAMETERCOLLECTION_INTERNAL_FILESTREAMHELPER_H
#define PARAMETERCOLLECTION_INTERNAL_FILESTREAMHELPER_H

#include <GenApi/GenApi.h>
#include <GenApi/Filestream.h>
#include <memory>
#include <string>

namespace ParameterCollection {
namespace Internal {

class CFileStreamHelper {
public:
    CFileStreamHelper() = default;
    CFileStreamHelper(const CFileStreamHelper&) = delete;
    CFileStreamHelper& operator=(const CFileStreamHelper&) = delete;
    // Closes the open stream; an exception escaping that close breaks an invariant.
    ~CFileStreamHelper();

    // True when "FileSelector" lists the name as an entry whose access mode is above NA.
    static bool FileExists(GENAPI_NAMESPACE::INodeMap* nodeMap, const char* name);
    // Opens the file for reading or for writing; afterwards the slot tells whether that worked. An open
    // stream raises what the device raises: a std stream would otherwise catch it and set badbit only.
    void Open(GENAPI_NAMESPACE::INodeMap* nodeMap, const char* name, bool forReading);
    // Reads up to `length` (not 0) bytes; `count` tells how many arrived, 0 at the end of the file. A
    // device error passes on.
    bool Read(void* buffer, std::streamsize length, size_t& count) const;
    // Writes `length` bytes; false when the device took fewer. A device error passes on.
    bool Write(const void* buffer, std::streamsize length) const;
    // Releases the input stream, or else the output stream; the slot is empty even when closing fails.
    void Close();
    // Closes whatever is open after a device error, keeping quiet about a second error on the way;
    // false when closing failed too.
    bool Abandon() noexcept;
    // Closes a file on the device that no stream of ours holds open any more.
    static void CloseOnDevice(GENAPI_NAMESPACE::INodeMap* nodeMap, const char* name);

    bool isInputOpen() const { return m_Input != nullptr; }
    bool isOutputOpen() const { return m_Output != nullptr; }

private:
    std::unique_ptr<GENAPI_NAMESPACE::IDevFileStream> m_Input;
    std::unique_ptr<GENAPI_NAMESPACE::ODevFileStream> m_Output;
    std::string m_FileName;  // the output stream keeps a pointer to it until closed
};

}  // namespace Internal
}  // namespace ParameterCollection

#endif
