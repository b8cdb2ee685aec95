// CCommandParameter: commands are never announced, and "DeviceReset" is never polled, since a device
// that executes it goes away.
#include "CommandParameter.h"
#include "GenICamExceptionTranslation.h"
#include "NodeMapLock.h"

using namespace GENAPI_NAMESPACE;

namespace ParameterCollection {
namespace Internal {

CCommandParameter::CCommandParameter(QString const& name, QString const& nodeMapName,
                                     QSharedPointer<CObjectState> state,
                                     QSharedPointer<CModeratedParameterEventDecouplerThread> decoupler,
                                     QObject* parent)
    : CParameter(name, nodeMapName, state, decoupler, parent), m_Command(nullptr) {
    setCachedDataType<CommandParameterData>(this);
}

EParameterType CCommandParameter::getParameterType() {
    return ParameterType_Command;
}

bool CCommandParameter::attach(INodeMap* nodeMap) {
    const bool attached = CParameter::attach(nodeMap);
    m_Command = nodeAs<ICommand>(false);
    return attached;
}

void CCommandParameter::execute(bool verify) {
    translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(objectState());
        raiseExceptionIfDisposed();
        raiseExceptionIfNotWritable();
        requireNode(m_Command)->Execute(verify);
    });
}

bool CCommandParameter::tryExecute() {
    CScopedObjectStateLock lock(objectState());
    if (isEmpty() || !inWritableMode())
        return false;
    requireNode(m_Command)->Execute(true);
    return true;
}

bool CCommandParameter::isDone() {
    return translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(objectState());
        return !m_Command || !inReadableMode() || m_Command.load()->IsDone(true);
    });
}

bool CCommandParameter::isExecuting() {
    if (getName() == QLatin1String("DeviceReset"))
        return false;
    return translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(objectState());
        return m_Command && inReadableMode() && !m_Command.load()->IsDone(true);
    });
}

// Done-ness is refreshed whether or not the command can be read: an unreadable command counts as done.
// It is read under the node map lock as well, so that it belongs to the same state as the base fields.
bool CCommandParameter::updateCachedParameterData() {
    CScopedObjectStateLock lock(objectState());
    CNodeMapLock mapLock(node());
    const bool wasValid = cacheValid();
    bool changed = CParameter::updateCachedParameterData();
    CommandParameterData& data = static_cast<CommandParameterData&>(*cachedData());
    const bool done = isDone();
    if (!wasValid || data.isDone != done) {
        data.isDone = done;
        noteRecordChanged();
        changed = true;
    }
    return changed;
}

QSharedPointer<ParameterData> CCommandParameter::getCachedParameterData() {
    return copyCachedDataAs<CommandParameterData>();
}

}  // namespace Internal
}  // namespace ParameterCollection
