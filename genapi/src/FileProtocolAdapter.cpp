// The SFNC file-access protocol: select the file, set offset and length, choose the operation, execute,
// wait until done, check the status, and move the data through FileAccessBuffer.
#include <GenApi/GenApi.h>
#include <GenApi/Filestream.h>
#include <chrono>
#include <thread>
#include <vector>

namespace GENAPI_NAMESPACE {

namespace {

// How long an operation may run before the adapter gives up on it.
constexpr std::chrono::seconds operationTimeout(10);

const char* openModeText(std::ios_base::openmode mode) {
    const bool in = (mode & std::ios_base::in) != 0;
    const bool out = (mode & std::ios_base::out) != 0;
    if (in && out)
        return "ReadWrite";
    return out ? "Write" : "Read";
}

}  // namespace

class FileProtocolAdapter::CImpl {
public:
    bool attach(INodeMap* map) {
        if (!map)
            return false;
        m_Selector = map->GetNode("FileSelector");
        m_Operation = map->GetNode("FileOperationSelector");
        m_Execute = map->GetNode("FileOperationExecute");
        m_OpenMode = map->GetNode("FileOpenMode");
        m_Buffer = map->GetNode("FileAccessBuffer");
        m_Offset = map->GetNode("FileAccessOffset");
        m_Length = map->GetNode("FileAccessLength");
        m_Status = map->GetNode("FileOperationStatus");
        m_Result = map->GetNode("FileOperationResult");
        m_Size = map->GetNode("FileSize");
        return m_Selector.IsValid() && m_Operation.IsValid() && m_Execute.IsValid() && m_OpenMode.IsValid() &&
               m_Buffer.IsValid() && m_Offset.IsValid() && m_Length.IsValid() && m_Status.IsValid() &&
               m_Result.IsValid();
    }

    // Selects the file as GenApi does, by its text: a name FileSelector does not list raises
    // InvalidArgumentException, an entry that is not available AccessException.
    void select(const char* name) { m_Selector->FromString(name); }

    // Runs the chosen operation to its end; true when the device reports success.
    bool run(const char* operation) {
        m_Operation->FromString(operation);
        m_Execute->Execute();
        waitUntilDone();
        return m_Status->ToString() == "Success";
    }

    void waitUntilDone() {
        const auto deadline = std::chrono::steady_clock::now() + operationTimeout;
        while (!m_Execute->IsDone()) {
            if (std::chrono::steady_clock::now() > deadline)
                throw TIMEOUT_EXCEPTION("FileOperationExecute did not finish within %d s",
                                        static_cast<int>(operationTimeout.count()));
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }

    bool open(const char* name, std::ios_base::openmode mode) {
        select(name);
        m_OpenMode->FromString(openModeText(mode));
        return run("Open");
    }

    // One chunk of at most the buffer's length; the count the device reports, or -1 on failure.
    GenICam_streamsize transfer(char* data, int64_t offset, int64_t length, const char* name, bool reading) {
        select(name);
        const int64_t capacity = m_Buffer->GetLength();
        const int64_t chunk = std::min(length, capacity);
        if (reading && m_Size.IsValid() && IsReadable(m_Size) && offset >= m_Size->GetValue())
            return 0;
        std::vector<uint8_t> buffer(static_cast<size_t>(capacity), 0);
        if (!reading) {
            std::copy(data, data + chunk, buffer.begin());
            m_Buffer->Set(buffer.data(), capacity);
        }
        m_Offset->SetValue(offset);
        m_Length->SetValue(chunk);
        if (!run(reading ? "Read" : "Write"))
            return -1;
        const int64_t count = std::min<int64_t>(m_Result->GetValue(), chunk);
        if (reading && count > 0) {
            m_Buffer->Get(buffer.data(), capacity);
            std::copy(buffer.begin(), buffer.begin() + count, data);
        }
        return count;
    }

    int64_t bufferSize() { return m_Buffer->GetLength(); }

    CEnumerationPtr m_Selector;
    CEnumerationPtr m_Operation;
    CCommandPtr m_Execute;
    CEnumerationPtr m_OpenMode;
    CRegisterPtr m_Buffer;
    CIntegerPtr m_Offset;
    CIntegerPtr m_Length;
    CEnumerationPtr m_Status;
    CIntegerPtr m_Result;
    CIntegerPtr m_Size;
};

FileProtocolAdapter::FileProtocolAdapter() : m_pImpl(new CImpl()) {}

FileProtocolAdapter::~FileProtocolAdapter() {
    delete m_pImpl;
}

bool FileProtocolAdapter::attach(INodeMap* pInterface) {
    return m_pImpl->attach(pInterface);
}

bool FileProtocolAdapter::openFile(const char* pFileName, std::ios_base::openmode mode) {
    return m_pImpl->open(pFileName, mode);
}

bool FileProtocolAdapter::closeFile(const char* pFileName) {
    m_pImpl->select(pFileName);
    return m_pImpl->run("Close");
}

GenICam_streamsize FileProtocolAdapter::write(const char* buf, int64_t offs, int64_t len,
                                              const char* pFileName) {
    GenICam_streamsize written = 0;
    while (written < len) {
        const GenICam_streamsize count = m_pImpl->transfer(const_cast<char*>(buf) + written, offs + written,
                                                           len - written, pFileName, false);
        if (count <= 0)
            break;
        written += count;
    }
    return written;
}

GenICam_streamsize FileProtocolAdapter::read(char* buf, int64_t offs, GenICam_streamsize len,
                                             const char* pFileName) {
    GenICam_streamsize done = 0;
    while (done < len) {
        const GenICam_streamsize count =
            m_pImpl->transfer(buf + done, offs + done, len - done, pFileName, true);
        if (count < 0)
            return done > 0 ? done : count;
        if (count == 0)
            break;
        done += count;
    }
    return done;
}

int64_t FileProtocolAdapter::getBufSize(const char* pFileName, std::ios_base::openmode) {
    m_pImpl->select(pFileName);
    return m_pImpl->bufferSize();
}

bool FileProtocolAdapter::deleteFile(const char* pFileName) {
    m_pImpl->select(pFileName);
    return m_pImpl->run("Delete");
}

void FileProtocolAdapter::WaitUntilFileOperationExecuteDone(bool) {
    m_pImpl->waitUntilDone();
}

}  // namespace GENAPI_NAMESPACE
