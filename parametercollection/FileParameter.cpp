// CFileParameter: every operation under the state lock, GenICam errors translated.
#include "FileParameter.h"
#include "ScopedObjectStateLock.h"
#include "internal/FileStreamHelper.h"
#include "internal/GenICamExceptionTranslation.h"
#include <GenApi/GenApi.h>
#include <exception>

using namespace ParameterCollection::Internal;

namespace ParameterCollection {

namespace {
constexpr int textChunk = 256;
}

CFileParameter::CFileParameter(QString fileName, QString nodeMapName, QSharedPointer<CObjectState> state,
                               QSharedPointer<CModeratedParameterEventDecouplerThread> decoupler,
                               QObject* parent)
    : CParameter(fileName, nodeMapName, state, decoupler, parent), m_FileName(fileName), m_NodeMap(nullptr) {}

CFileParameter::~CFileParameter() = default;

CFileStreamHelper& CFileParameter::createHelper() {
    if (!m_Helper)
        m_Helper.reset(new CFileStreamHelper());
    return *m_Helper;
}

void CFileParameter::close() {
    translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(objectState());
        if (!m_Helper)
            return;
        std::unique_ptr<CFileStreamHelper> helper = std::move(m_Helper);
        try {
            helper->Close();
        } catch (...) {
            m_DeviceMayHoldFile = true;
            throw;
        }
    });
}

// The new node map is kept even when closing the old stream fails: a device that went away must not
// leave the parameter bound to a map its owner is about to free. The close error is reported after.
bool CFileParameter::attach(GENAPI_NAMESPACE::INodeMap* nodeMap) {
    CScopedObjectStateLock lock(objectState());
    std::exception_ptr closeError;
    try {
        close();
    } catch (...) {
        closeError = std::current_exception();
    }
    m_NodeMap = nodeMap;
    if (closeError)
        std::rethrow_exception(closeError);
    return isAvailable();
}

bool CFileParameter::isAvailable() {
    return translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(objectState());
        createHelper();
        return m_NodeMap && CFileStreamHelper::FileExists(m_NodeMap, m_FileName.toUtf8().constData());
    });
}

bool CFileParameter::isImplemented() {
    return isAvailable();
}

bool CFileParameter::isEmpty() {
    return isAvailable();
}

// A file the device does not offer answers false before anything is opened: GenApi's file adapter raises
// for a name FileSelector does not list or whose entry is not available.
bool CFileParameter::probe(bool forReading) {
    return translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(objectState());
        CFileStreamHelper& helper = createHelper();
        if (helper.isInputOpen())
            return forReading;
        if (helper.isOutputOpen())
            return !forReading;
        const QByteArray fileName = m_FileName.toUtf8();
        if (!m_NodeMap || !CFileStreamHelper::FileExists(m_NodeMap, fileName.constData()))
            return false;
        open(helper, forReading);
        const bool opened = forReading ? helper.isInputOpen() : helper.isOutputOpen();
        close();
        return opened;
    });
}

bool CFileParameter::isReadable() {
    return probe(true);
}

bool CFileParameter::isWriteable() {
    return probe(false);
}

long long CFileParameter::read(void* buffer, long long length) {
    return translateGenICamExceptions([&]() -> long long {
        CScopedObjectStateLock lock(objectState());
        CFileStreamHelper& helper = createHelper();
        if (!helper.isInputOpen() && !helper.isOutputOpen())
            open(helper, true);
        if (!helper.isInputOpen())
            return 0;
        const int chunk = GENICAM_NAMESPACE::INTEGRAL_CAST<int>(length);
        size_t count = 0;
        abandonOnError(helper, [&] { helper.Read(buffer, chunk, count); });
        return static_cast<long long>(count);
    });
}

bool CFileParameter::write(void* buffer, long long length) {
    return translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(objectState());
        CFileStreamHelper& helper = createHelper();
        if (!helper.isInputOpen() && !helper.isOutputOpen())
            open(helper, false);
        if (!helper.isOutputOpen())
            return false;
        const int chunk = GENICAM_NAMESPACE::INTEGRAL_CAST<int>(length);
        bool written = false;
        abandonOnError(helper, [&] { written = helper.Write(buffer, chunk); });
        return written;
    });
}

// A stream the device failed in the middle of is closed, so that the next read or write starts the file
// afresh instead of finding a broken stream that answers 0; the error itself passes on.
template <typename Transfer>
void CFileParameter::abandonOnError(CFileStreamHelper& helper, Transfer transfer) {
    try {
        transfer();
    } catch (...) {
        m_DeviceMayHoldFile = !helper.Abandon();
        m_Helper.reset();
        throw;
    }
}

// A device whose file could not be closed after an error still holds it open and refuses to open it
// again; once it answers again, the file is closed on the device and opened once more.
void CFileParameter::open(CFileStreamHelper& helper, bool forReading) {
    const QByteArray fileName = m_FileName.toUtf8();
    helper.Open(m_NodeMap, fileName.constData(), forReading);
    const bool opened = forReading ? helper.isInputOpen() : helper.isOutputOpen();
    if (opened || !m_DeviceMayHoldFile)
        return;
    m_DeviceMayHoldFile = false;
    CFileStreamHelper::CloseOnDevice(m_NodeMap, fileName.constData());
    helper.Open(m_NodeMap, fileName.constData(), forReading);
}

// Chunks of 256 bytes; a zero byte inside a chunk ends that chunk's text. The bytes are decoded once at
// the end, so that a character whose UTF-8 bytes straddle two chunks stays one character.
QString CFileParameter::toString() {
    CScopedObjectStateLock lock(objectState());
    QByteArray chunk(textChunk + 1, '\0');
    QByteArray bytes;
    for (;;) {
        const long long count = read(chunk.data(), textChunk);
        if (count == 0)
            break;
        chunk[static_cast<int>(count)] = '\0';
        bytes += chunk.constData();
    }
    return QString::fromUtf8(bytes);
}

void CFileParameter::parseAndSetValue(QString const& text) {
    CScopedObjectStateLock lock(objectState());
    QByteArray bytes = text.toUtf8();
    write(bytes.data(), bytes.size());
    close();
}

}  // namespace ParameterCollection
