// CStringParameter: Latin-1 texts from GenApi, UTF-8 texts to it; GenApi judges the length.
#include "StringParameter.h"
#include "GenICamExceptionTranslation.h"

using namespace GENAPI_NAMESPACE;

namespace ParameterCollection {
namespace Internal {

CStringParameter::CStringParameter(QString const& name, QString const& nodeMapName,
                                   QSharedPointer<CObjectState> state,
                                   QSharedPointer<CModeratedParameterEventDecouplerThread> decoupler,
                                   QObject* parent)
    : CParameter(name, nodeMapName, state, decoupler, parent), m_String(nullptr) {
    setCachedDataType<StringParameterData>(this);
}

EParameterType CStringParameter::getParameterType() {
    return ParameterType_String;
}

QString CStringParameter::toString() {
    return CParameter::toString();
}

void CStringParameter::parseAndSetValue(QString const& value) {
    CParameter::parseAndSetValue(value);
}

bool CStringParameter::attach(INodeMap* nodeMap) {
    CParameter::attach(nodeMap);
    m_String = nodeAs<IString>(true);
    return m_String != nullptr;
}

QString CStringParameter::getValue() {
    return valueRead(m_String,
                     [](IString* node) { return QString::fromLatin1(node->GetValue(false, false).c_str()); });
}

qint64 CStringParameter::getMaxLength() {
    return standardRead(m_String, [](IString* node) { return static_cast<qint64>(node->GetMaxLength()); });
}

// Announced first; without a string node nothing is written.
void CStringParameter::announceAndWriteText(const QString& value) {
    const QByteArray utf8 = value.toUtf8();
    announceValue(value);
    if (m_String)
        m_String.load()->SetValue(utf8.constData(), true);
}

void CStringParameter::setValue(QString value) {
    translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(objectState());
        raiseExceptionIfDisposed();
        raiseExceptionIfNotWritable();
        announceAndWriteText(value);
    });
}

bool CStringParameter::trySetValue(QString value) {
    return translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(objectState());
        if (isEmpty() || !m_String || !inWritableMode())
            return false;
        announceAndWriteText(value);
        return true;
    });
}

QString CStringParameter::getValueOrDefault(QString defaultValue) {
    return translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(objectState());
        if (!m_String || !inReadableMode())
            return defaultValue;
        return QString::fromLatin1(m_String.load()->GetValue(false, false).c_str());
    });
}

bool CStringParameter::updateCachedParameterData() {
    return refreshWithTypedFields([](bool, CNodeMapLock&) { return false; });
}

QSharedPointer<ParameterData> CStringParameter::getCachedParameterData() {
    return copyCachedDataAs<StringParameterData>();
}

}  // namespace Internal
}  // namespace ParameterCollection
