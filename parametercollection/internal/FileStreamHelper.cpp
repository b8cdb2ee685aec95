// Opening, reading and closing device-file streams for a file parameter.
#include "FileStreamHelper.h"
#include <QtGlobal>

using namespace GENAPI_NAMESPACE;

namespace ParameterCollection {
namespace Internal {

CFileStreamHelper::~CFileStreamHelper() {
    try {
        Close();
    } catch (...) {
        Q_ASSERT_X(false, "CFileStreamHelper::~CFileStreamHelper()", "closing the stream failed");
    }
}

bool CFileStreamHelper::FileExists(INodeMap* nodeMap, const char* name) {
    CEnumerationPtr selector(nodeMap ? nodeMap->GetNode("FileSelector") : nullptr);
    if (!selector.IsValid())
        return false;
    NodeList_t entries;
    selector->GetEntries(entries);
    for (INode* node : entries) {
        IEnumEntry* entry = dynamic_cast<IEnumEntry*>(node);
        if (entry && node->GetAccessMode() > NA && entry->GetSymbolic() == name)
            return true;
    }
    return false;
}

void CFileStreamHelper::Open(INodeMap* nodeMap, const char* name, bool forReading) {
    m_FileName = name;
    if (forReading) {
        m_Input.reset(new IDevFileStream(nodeMap, m_FileName.c_str()));
        if (!m_Input->is_open())
            m_Input.reset();
        else
            m_Input->exceptions(std::ios_base::badbit);
    } else {
        m_Output.reset(new ODevFileStream(nodeMap, m_FileName.c_str()));
        if (!m_Output->is_open())
            m_Output.reset();
        else
            m_Output->exceptions(std::ios_base::badbit);
    }
}

bool CFileStreamHelper::Read(void* buffer, std::streamsize length, size_t& count) const {
    Q_ASSERT_X(length, "bool CFileStreamHelper::Read(void*, std::streamsize, size_t&) const", "length");
    count = 0;
    if (!m_Input)
        return false;
    m_Input->read(static_cast<char*>(buffer), length);
    count = static_cast<size_t>(m_Input->gcount());
    return count > 0;
}

// A device that takes fewer bytes than written sets badbit, which raises std::ios_base::failure under the
// exception mask; that is the stream's answer "not written", not an error of the device.
bool CFileStreamHelper::Write(const void* buffer, std::streamsize length) const {
    if (!m_Output)
        return false;
    try {
        m_Output->write(static_cast<const char*>(buffer), length);
    } catch (const std::ios_base::failure&) {
        return false;
    }
    return m_Output->good();
}

void CFileStreamHelper::Close() {
    if (m_Input) {
        std::unique_ptr<IDevFileStream> input = std::move(m_Input);
        input->close();
    } else if (m_Output) {
        std::unique_ptr<ODevFileStream> output = std::move(m_Output);
        output->close();
    }
}

bool CFileStreamHelper::Abandon() noexcept {
    try {
        Close();
        return true;
    } catch (...) {
        return false;
    }
}

void CFileStreamHelper::CloseOnDevice(INodeMap* nodeMap, const char* name) {
    FileProtocolAdapter adapter;
    if (adapter.attach(nodeMap))
        adapter.closeFile(name);
}

}  // namespace Internal
}  // namespace ParameterCollection
