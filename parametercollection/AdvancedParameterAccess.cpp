// The key table of node metadata: what each key reads, its text form, and the two writable keys.
#include "AdvancedParameterAccess.h"
#include "Exceptions.h"
#include "ScopedObjectStateLock.h"
#include "internal/GenICamExceptionTranslation.h"
#include "internal/VisibilityText.h"
#include <GenApi/GenApi.h>
#include <GenApi/EnumClasses.h>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>
#include <functional>
#include <map>

using namespace GENAPI_NAMESPACE;
using ParameterCollection::Internal::translateGenICamExceptions;

namespace ParameterCollection {
namespace {

typedef std::function<QString(INode*)> PropertyReader;

QString fromLatin1(const GENICAM_NAMESPACE::gcstring& text) {
    return QString::fromLatin1(text.c_str());
}
QString fromUtf8(const GENICAM_NAMESPACE::gcstring& text) {
    return QString::fromUtf8(text.c_str());
}
QString yesOrNo(bool value) {
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

QString nameSpaceText(ENameSpace nameSpace) {
    switch (nameSpace) {
        case Custom:
            return QStringLiteral("Custom");
        case Standard:
            return QStringLiteral("Standard");
        default:
            return QStringLiteral("_UndefinedNameSpace");
    }
}

QString yesNoText(EYesNo value) {
    switch (value) {
        case Yes:
            return QStringLiteral("Yes");
        case No:
            return QStringLiteral("No");
        default:
            return QStringLiteral("_UndefinedYesNo");
    }
}

bool isIntegerOrFloat(INode* node) {
    const EInterfaceType type = node->GetPrincipalInterfaceType();
    return type == intfIInteger || type == intfIFloat;
}

// The keys every attached node contains, with how each is read.
const std::map<QString, PropertyReader>& alwaysContainedKeys() {
    static const std::map<QString, PropertyReader> keys = {
        {"Description", [](INode* n) { return fromLatin1(n->GetDescription()); }},
        {"ShortDescription", [](INode* n) { return fromLatin1(n->GetToolTip()); }},
        {"Tooltip", [](INode* n) { return fromLatin1(n->GetToolTip()); }},
        {"DisplayName", [](INode* n) { return fromLatin1(n->GetDisplayName()); }},
        {"DocuURL", [](INode* n) { return fromLatin1(n->GetDocuURL()); }},
        {"IsDeprecated", [](INode* n) { return yesOrNo(n->IsDeprecated()); }},
        {"Visibility",
         [](INode* n) {
             return Internal::visibilityText(n->GetVisibility(), QStringLiteral("_UndefinedVisibility"));
         }},
        {"Namespace", [](INode* n) { return nameSpaceText(n->GetNameSpace()); }},
        {"IsCacheable", [](INode* n) { return yesOrNo(n->IsCachable()); }},
        {"IsAccessModeCacheable", [](INode* n) { return yesNoText(n->IsAccessModeCacheable()); }},
        {"CachingMode", [](INode* n) { return fromUtf8(ECachingModeClass::ToString(n->GetCachingMode())); }},
        {"PollingTime",
         [](INode* n) { return QString::number(static_cast<qlonglong>(n->GetPollingTime())); }},
        {"DevicePortName", [](INode* n) { return fromUtf8(n->GetDeviceName()); }},
        {"EventID", [](INode* n) { return fromUtf8(n->GetEventID()); }},
        {"IsStreamable", [](INode* n) { return yesOrNo(n->IsStreamable()); }},
        {"AccessMode", [](INode* n) { return fromUtf8(EAccessModeClass::ToString(n->GetAccessMode())); }},
        {"IsFeature", [](INode* n) { return yesOrNo(n->IsFeature()); }},
        {"PrincipalInterfaceType", [](INode* n) { return principalInterfaceTypeToQString(n); }},
    };
    return keys;
}

// The keys that depend on the node's type; they read as empty text where the type does not qualify.
const std::map<QString, PropertyReader>& typedKeys() {
    static const std::map<QString, PropertyReader> keys = {
        {"Representation",
         [](INode* n) {
             if (IInteger* i = dynamic_cast<IInteger*>(n))
                 return fromUtf8(ERepresentationClass::ToString(i->GetRepresentation()));
             if (IFloat* f = dynamic_cast<IFloat*>(n))
                 return fromUtf8(ERepresentationClass::ToString(f->GetRepresentation()));
             return QString();
         }},
        {"Unit",
         [](INode* n) {
             if (IInteger* i = dynamic_cast<IInteger*>(n))
                 return fromUtf8(i->GetUnit());
             if (IFloat* f = dynamic_cast<IFloat*>(n))
                 return fromUtf8(f->GetUnit());
             return QString();
         }},
        {"DisplayNotation",
         [](INode* n) {
             IFloat* f = dynamic_cast<IFloat*>(n);
             return f ? fromUtf8(EDisplayNotationClass::ToString(f->GetDisplayNotation())) : QString();
         }},
        {"DisplayPrecision",
         [](INode* n) {
             IFloat* f = dynamic_cast<IFloat*>(n);
             return f ? QString::number(static_cast<qlonglong>(f->GetDisplayPrecision())) : QString();
         }},
    };
    return keys;
}

QJsonArray tabSeparated(const GENICAM_NAMESPACE::gcstring& text) {
    return QJsonArray::fromStringList(QString::fromUtf8(text.c_str()).split(QLatin1Char('\t')));
}

}  // namespace

QString principalInterfaceTypeToQString(INode* node) {
    switch (node->GetPrincipalInterfaceType()) {
        case intfIInteger:
            return QStringLiteral("intfIInteger");
        case intfIBoolean:
            return QStringLiteral("intfIBoolean");
        case intfICommand:
            return QStringLiteral("intfICommand");
        case intfIFloat:
            return QStringLiteral("intfIFloat");
        case intfIString:
            return QStringLiteral("intfIString");
        case intfIRegister:
            return QStringLiteral("intfIRegister");
        case intfICategory:
            return QStringLiteral("intfICategory");
        case intfIEnumeration:
            return QStringLiteral("intfIEnumeration");
        case intfIEnumEntry:
            return QStringLiteral("intfIEnumEntry");
        case intfIPort:
            return QStringLiteral("intfIPort");
        default:
            return QStringLiteral("undefined");
    }
}

CAdvancedParameterAccess::CAdvancedParameterAccess(QSharedPointer<CObjectState> objectState)
    : IAdvancedParameterAccess(nullptr), m_Node(nullptr), m_ObjectState(objectState), m_Attached(false) {}

CAdvancedParameterAccess::~CAdvancedParameterAccess() {}

void CAdvancedParameterAccess::attach(INode* node, bool attached) {
    CScopedObjectStateLock lock(m_ObjectState.data());
    m_Node = node;
    m_Attached = attached;
}

bool CAdvancedParameterAccess::containsProperty(const QString& key) {
    CScopedObjectStateLock lock(m_ObjectState.data());
    if (!m_Node)
        return false;
    if (alwaysContainedKeys().count(key))
        return true;
    return translateGenICamExceptions([&] {
        if (key == "Representation" || key == "Unit" || key == "DisplayPrecision")
            return isIntegerOrFloat(m_Node);
        if (key == "DisplayNotation")
            return m_Node->GetPrincipalInterfaceType() == intfIFloat;
        return false;
    });
}

QString CAdvancedParameterAccess::getProperty(const QString& key) {
    if (key.isEmpty() || !m_Node) {
        throw Core::Exception::ArgumentException("CAdvancedParameterAccess::getProperty(): Key is empty.");
    }
    return translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(m_ObjectState.data());
        raiseExceptionIfDisposed();
        raiseExceptionIfNotAvailable();
        return readProperty(key);
    });
}

QString CAdvancedParameterAccess::readProperty(const QString& key) {
    const auto always = alwaysContainedKeys().find(key);
    if (always != alwaysContainedKeys().end())
        return always->second(m_Node);
    const auto typed = typedKeys().find(key);
    if (typed != typedKeys().end())
        return typed->second(m_Node);
    if (key == "DebugGenApiNodeProperties")
        return nodePropertiesAsJson();
    throw Core::Exception::OperationNotSupportedException("The property key " + key + " is not available.");
}

// One object per raw property; pointer properties (names starting with "p") split their lists.
QString CAdvancedParameterAccess::nodePropertiesAsJson() {
    GENICAM_NAMESPACE::gcstring_vector names;
    m_Node->GetPropertyNames(names);
    QJsonArray properties;
    for (size_t i = 0; i < names.size(); ++i) {
        GENICAM_NAMESPACE::gcstring value, attribute;
        m_Node->GetProperty(names[i], value, attribute);
        const QString name = QString::fromUtf8(names[i].c_str());
        QJsonObject property{{"name", name}};
        if (name.startsWith(QLatin1Char('p'))) {
            property.insert("isPointer", "true");
            property.insert("values", tabSeparated(value));
            property.insert("attributes", tabSeparated(attribute));
        } else {
            property.insert("isPointer", "false");
            property.insert("value", QString::fromUtf8(value.c_str()));
            property.insert("attribute", QString::fromUtf8(attribute.c_str()));
        }
        properties.append(property);
    }
    return QString::fromUtf8(QJsonDocument(properties).toJson());
}

QString CAdvancedParameterAccess::getPropertyOrDefault(const QString& key, const QString& defaultValue) {
    return containsProperty(key) ? getProperty(key) : defaultValue;
}

void CAdvancedParameterAccess::refresh() {
    translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(m_ObjectState.data());
        if (m_Node)
            m_Node->InvalidateNode();
    });
}

void CAdvancedParameterAccess::setProperty(const QString& key, const QString& value) {
    if (key.isEmpty()) {
        throw Core::Exception::ArgumentException("CAdvancedParameterAccess::setProperty(): Key is empty");
    }
    translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(m_ObjectState.data());
        raiseExceptionIfDisposed();
        raiseExceptionIfNotAvailable();
        const GENICAM_NAMESPACE::gcstring text(value.toUtf8().constData());
        if (key == "Visibility") {
            EVisibility visibility;
            if (!EVisibilityClass::FromString(text, &visibility)) {
                throw Core::Exception::ArgumentException("Visibility value " + value + " not supported.");
            }
            requireNode()->ImposeVisibility(visibility);
        } else if (key == "AccessMode") {
            EAccessMode accessMode;
            if (!EAccessModeClass::FromString(text, &accessMode)) {
                throw Core::Exception::ArgumentException("Access mode value " + value + " not supported.");
            }
            requireNode()->ImposeAccessMode(accessMode);
        } else {
            throw Core::Exception::OperationNotSupportedException("The property key " + key +
                                                                  " is not available or not writable.");
        }
    });
}

// A value accepted for an unbound access has no node to be imposed on.
INode* CAdvancedParameterAccess::requireNode() const {
    if (!m_Node)
        throw Core::Exception::InvalidOperationException(QObject::tr("Node is empty."));
    return m_Node;
}

void CAdvancedParameterAccess::raiseExceptionIfDisposed() {
    if (m_ObjectState->getState() == ObjectState_Disposed) {
        throw Core::Exception::ObjectDisposedException(
            "The parent object of the parameter has been disposed.");
    }
}

void CAdvancedParameterAccess::raiseExceptionIfNotAvailable() {
    if (m_ObjectState->getState() == ObjectState_Closed && m_Attached && !m_Node) {
        throw Core::Exception::ObjectDisposedException("The parent object of the parameter is closed.");
    }
    raiseExceptionIfDisposed();
}

}  // namespace ParameterCollection
