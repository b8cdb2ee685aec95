// CPortParameter: both raw operations report argument errors with the words "readRaw", by design.
#include "PortParameter.h"
#include "../Exceptions.h"
#include "GenICamExceptionTranslation.h"

using namespace GENAPI_NAMESPACE;

namespace ParameterCollection {
namespace Internal {

CPortParameter::CPortParameter(QString const& name, QString const& nodeMapName,
                               QSharedPointer<CObjectState> state,
                               QSharedPointer<CModeratedParameterEventDecouplerThread> decoupler,
                               QObject* parent)
    : CParameter(name, nodeMapName, state, decoupler, parent), m_Port(nullptr) {}

bool CPortParameter::attach(INodeMap* nodeMap) {
    CParameter::attach(nodeMap);
    m_Port = nodeAs<IPort>(true);
    return m_Port != nullptr;
}

bool CPortParameter::checkTransfer(void* buffer, qint64 length) {
    if (length == 0)
        return false;
    if (length < 0)
        throw Core::Exception::ArgumentException("CPortParameter::readRaw Argument must not be negative.");
    if (!buffer)
        throw Core::Exception::ArgumentException("CPortParameter::readRaw Invalid buffer passed.");
    return true;
}

// A port parameter whose attach found no port refuses like an empty parameter.
IPort* CPortParameter::requirePort() {
    if (!m_Port)
        throw Core::Exception::InvalidOperationException(QObject::tr("Node is empty."));
    return m_Port;
}

void CPortParameter::readRaw(qint64 address, void* buffer, qint64 length) {
    if (!checkTransfer(buffer, length))
        return;
    translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(objectState());
        raiseExceptionIfDisposed();
        requirePort()->Read(buffer, address, length);
    });
}

void CPortParameter::writeRaw(qint64 address, void* buffer, qint64 length) {
    if (!checkTransfer(buffer, length))
        return;
    translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(objectState());
        raiseExceptionIfDisposed();
        requirePort()->Write(buffer, address, length);
    });
}

void CPortParameter::parseAndSetValue(QString const&) {
    raiseExceptionIfDisposed();
    throw Core::Exception::OperationNotSupportedException("This operation is not supported.");
}

}  // namespace Internal
}  // namespace ParameterCollection
