// CBooleanParameter: announces "1" or "0" (the integer form), not GenApi's boolean text.
#include "BooleanParameter.h"
#include "GenICamExceptionTranslation.h"

using namespace GENAPI_NAMESPACE;

namespace ParameterCollection {
namespace Internal {

CBooleanParameter::CBooleanParameter(QString const& name, QString const& nodeMapName,
                                     QSharedPointer<CObjectState> state,
                                     QSharedPointer<CModeratedParameterEventDecouplerThread> decoupler,
                                     QObject* parent)
    : CParameter(name, nodeMapName, state, decoupler, parent), m_Boolean(nullptr) {
    setCachedDataType<BooleanParameterData>(this);
}

EParameterType CBooleanParameter::getParameterType() {
    return ParameterType_Boolean;
}

QString CBooleanParameter::toString() {
    return CParameter::toString();
}

void CBooleanParameter::parseAndSetValue(QString const& value) {
    CParameter::parseAndSetValue(value);
}

bool CBooleanParameter::attach(INodeMap* nodeMap) {
    const bool attached = CParameter::attach(nodeMap);
    m_Boolean = nodeAs<IBoolean>(false);
    return attached;
}

void CBooleanParameter::setValue(bool value, bool verify) {
    standardWrite([&] { return announcementText(static_cast<long long>(value)); },
                  [&] {
                      if (m_Boolean)
                          m_Boolean.load()->SetValue(value, verify);
                  });
}

bool CBooleanParameter::getValue(bool verify, bool ignoreCache) {
    return valueRead(m_Boolean, [&](IBoolean* node) { return node->GetValue(verify, ignoreCache); });
}

bool CBooleanParameter::trySetValue(bool value) {
    CScopedObjectStateLock lock(objectState());
    if (isEmpty() || !inWritableMode())
        return false;
    announceValue(announcementText(static_cast<long long>(value)));
    requireNode(m_Boolean)->SetValue(value, true);
    return true;
}

bool CBooleanParameter::getValueOrDefault(bool defaultValue) {
    CScopedObjectStateLock lock(objectState());
    return m_Boolean && inReadableMode() ? m_Boolean.load()->GetValue(false, false) : defaultValue;
}

bool CBooleanParameter::updateCachedParameterData() {
    return refreshWithTypedFields([this](bool wasValid, CNodeMapLock&) {
        BooleanParameterData& data = static_cast<BooleanParameterData&>(*cachedData());
        const bool value = getValue(false, false);
        if (wasValid && data.value == value)
            return false;
        data.value = value;
        return true;
    });
}

QSharedPointer<ParameterData> CBooleanParameter::getCachedParameterData() {
    return copyCachedDataAs<BooleanParameterData>();
}

}  // namespace Internal
}  // namespace ParameterCollection
