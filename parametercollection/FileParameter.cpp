// CFileParameter: every operation under the state lock, GenICam errors translated.
#include "FileParameter.h"
#include "ScopedObjectStateLock.h"
#include "internal/FileStreamHelper.h"
#include "internal/GenICamExceptionTranslation.h"
#include <Base/GCUtilities.h>

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
        helper->Close();
    });
}

bool CFileParameter::attach(GENAPI_NAMESPACE::INodeMap* nodeMap) {
    CScopedObjectStateLock lock(objectState());
    close();
    m_NodeMap = nodeMap;
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

bool CFileParameter::probe(bool forReading) {
    return translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(objectState());
        CFileStreamHelper& helper = createHelper();
        if (helper.isInputOpen())
            return forReading;
        if (helper.isOutputOpen())
            return !forReading;
        helper.Open(m_NodeMap, m_FileName.toUtf8().constData(), forReading);
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
            helper.Open(m_NodeMap, m_FileName.toUtf8().constData(), true);
        if (!helper.isInputOpen())
            return 0;
        size_t count = 0;
        helper.Read(buffer, GENICAM_NAMESPACE::INTEGRAL_CAST<int>(length), count);
        return static_cast<long long>(count);
    });
}

bool CFileParameter::write(void* buffer, long long length) {
    return translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(objectState());
        CFileStreamHelper& helper = createHelper();
        if (!helper.isInputOpen() && !helper.isOutputOpen())
            helper.Open(m_NodeMap, m_FileName.toUtf8().constData(), false);
        if (!helper.isOutputOpen())
            return false;
        helper.output()->write(static_cast<const char*>(buffer),
                               GENICAM_NAMESPACE::INTEGRAL_CAST<int>(length));
        return helper.output()->good();
    });
}

// Chunks of 256 bytes; a zero byte inside a chunk ends that chunk's text.
QString CFileParameter::toString() {
    CScopedObjectStateLock lock(objectState());
    QByteArray chunk(textChunk + 1, '\0');
    QString text;
    for (;;) {
        const long long count = read(chunk.data(), textChunk);
        if (count == 0)
            break;
        chunk[static_cast<int>(count)] = '\0';
        text += QString::fromUtf8(chunk.constData());
    }
    return text;
}

void CFileParameter::parseAndSetValue(QString const& text) {
    CScopedObjectStateLock lock(objectState());
    QByteArray bytes = text.toUtf8();
    write(bytes.data(), bytes.size());
    close();
}

}  // namespace ParameterCollection
