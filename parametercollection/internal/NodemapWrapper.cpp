// CNodemapWrapper: parameter creation by interface type, re-binding, relations and feature streams.
#include "NodemapWrapper.h"
#include "BooleanParameter.h"
#include "CommandParameter.h"
#include "EnumParameter.h"
#include "FloatParameter.h"
#include "GenICamExceptionTranslation.h"
#include "../Exceptions.h"
#include "IntegerParameter.h"
#include "PortParameter.h"
#include "StringParameter.h"
#include <GenApi/GenApi.h>
#include <tavrin/FeaturePersistence.h>

using namespace GENAPI_NAMESPACE;

namespace ParameterCollection {
namespace Internal {

namespace {
constexpr int maximumCategoryDepth = 64;
}

CNodemapWrapper::CNodemapWrapper(QString name,
                                 QSharedPointer<CModeratedParameterEventDecouplerThread> decoupler,
                                 QSharedPointer<CObjectState> state)
    : m_NodeMap(nullptr), m_ObjectState(state), m_Name(name), m_Decoupler(decoupler) {}

CNodemapWrapper::~CNodemapWrapper() {}

QString CNodemapWrapper::cacheKey(const QString& featureName, bool isAlias) {
    return isAlias ? featureName + "/Alias" : featureName;
}

INode* CNodemapWrapper::findNode(const QString& featureName) const {
    return m_NodeMap ? m_NodeMap->GetNode(featureName.toUtf8().constData()) : nullptr;
}

void CNodemapWrapper::installValueSource(const QSharedPointer<CParameter>& parameter) {
    if (CEnumParameter* enumeration = dynamic_cast<CEnumParameter*>(parameter.data())) {
        enumeration->setEnumValueAdvancedParameterAccessSource(this);
    }
}

// Every cached parameter follows, in key order; a parameter that cannot be re-bound is fatal.
void CNodemapWrapper::Attach(INodeMap* nodeMap) {
    const QMap<QString, QSharedPointer<CParameter>> parameters = m_Parameters;
    for (const QSharedPointer<CParameter>& parameter : parameters) {
        try {
            parameter->attach(nodeMap);
        } catch (...) {
            qFatal("Attaching node map failed!");
        }
    }
    // A file's availability is asked again on use, so a device that cannot answer now is no failure.
    for (const QSharedPointer<CFileParameter>& file : m_FileParameters) {
        try {
            file->attach(nodeMap);
        } catch (const Core::Exception::BaseException&) {
        }
    }
    m_NodeMap = nodeMap;
}

void CNodemapWrapper::invalidate() {
    if (m_NodeMap)
        translateGenICamExceptions([&] { m_NodeMap->InvalidateNodes(); });
}

void CNodemapWrapper::poll(long long elapsedMilliseconds) {
    if (m_NodeMap)
        translateGenICamExceptions([&] { m_NodeMap->Poll(elapsedMilliseconds); });
}

void CNodemapWrapper::setCallbacksEnabled(bool enabled) {
    for (const QSharedPointer<CParameter>& parameter : m_Parameters)
        parameter->setIsCallbackEnabled(enabled);
}

QSharedPointer<CParameter> CNodemapWrapper::lookUpWithUnknownTypeInParameterCollection(
    const QString& featureName, bool isAlias) {
    const auto cached = m_Parameters.constFind(cacheKey(featureName, isAlias));
    if (cached != m_Parameters.constEnd())
        return cached.value();
    INode* node = findNode(featureName);
    if (node && isAlias)
        node = node->GetAlias();
    // Without the node (or its alias) the dummy keeps the alias flag, so that its attach finds nothing.
    if (!node)
        return createAndAddToListIfNoDummy<CParameter>(featureName, isAlias);
    switch (node->GetPrincipalInterfaceType()) {
        case intfIInteger:
            return createAndAddToListIfNoDummy<CIntegerParameter>(featureName, isAlias);
        case intfIBoolean:
            return createAndAddToListIfNoDummy<CBooleanParameter>(featureName, isAlias);
        case intfICommand:
            return createAndAddToListIfNoDummy<CCommandParameter>(featureName, isAlias);
        case intfIFloat:
            return createAndAddToListIfNoDummy<CFloatParameter>(featureName, isAlias);
        case intfIString:
            return createAndAddToListIfNoDummy<CStringParameter>(featureName, isAlias);
        case intfIEnumeration:
            return createAndAddToListIfNoDummy<CEnumParameter>(featureName, isAlias);
        case intfIPort:
            return createAndAddToListIfNoDummy<CPortParameter>(featureName, isAlias);
        default:
            return createAndAddToListIfNoDummy<CParameter>(featureName, isAlias);
    }
}

bool CNodemapWrapper::containsWithUnknownTypeInParameterCollection(const QString& featureName, bool isAlias) {
    if (m_Parameters.contains(cacheKey(featureName, isAlias)))
        return true;
    INode* node = findNode(featureName);
    return node && (!isAlias || node->GetAlias());
}

QSharedPointer<IAdvancedParameterAccess> CNodemapWrapper::getAdvancedParameterAccess(
    const QString& parameterName, const QString& valueName) {
    const QString entryName = "EnumEntry_" + parameterName + "_" + valueName;
    return lookUpWithUnknownTypeInParameterCollection(entryName, false)->getAdvancedParameterAccess();
}

QSharedPointer<IFileParameter> CNodemapWrapper::createFileParameter(const QString& fileName) {
    QSharedPointer<CFileParameter>& parameter = m_FileParameters[fileName];
    if (!parameter) {
        parameter.reset(new CFileParameter(fileName, m_Name, m_ObjectState, m_Decoupler, nullptr));
        parameter->attach(m_NodeMap);
    }
    return parameter;
}

QString CNodemapWrapper::buildPath(INode* node) const {
    return m_Name + "/" + QString::fromUtf8(node->GetName().c_str());
}

QList<QString> CNodemapWrapper::getParameterPaths() const {
    QList<QString> paths;
    if (!m_NodeMap)
        return paths;
    NodeList_t nodes;
    m_NodeMap->GetNodes(nodes);
    for (INode* node : nodes)
        paths.append(buildPath(node));
    return paths;
}

QList<QString> CNodemapWrapper::relatedNodes(INode* node, EParameterRelation relation, bool allNodes) {
    FeatureList_t features;
    if (relation == ParameterRelation_CategoryFeatures) {
        if (ICategory* category = dynamic_cast<ICategory*>(node))
            category->GetFeatures(features);
    } else if (ISelector* selector = dynamic_cast<ISelector*>(node)) {
        if (relation == ParameterRelation_SelectedFeatures)
            selector->GetSelectedFeatures(features);
        if (relation == ParameterRelation_SelectingFeatures)
            selector->GetSelectingFeatures(features);
    }
    QList<QString> names;
    for (IValue* feature : features) {
        INode* related = feature->GetNode();
        if (allNodes || related->IsFeature())
            names.append(buildPath(related));
    }
    return names;
}

QList<QString> CNodemapWrapper::getParameterRelationFromParameterCollection(const QString& featureName,
                                                                            EParameterRelation relation,
                                                                            bool allNodes) {
    return translateGenICamExceptions([&] {
        INode* node = findNode(featureName);
        if (!node)
            return QList<QString>();
        if (relation == ParameterRelation_CategoryPath) {
            bool found = false;
            return depthSearch(featureName, found, QStringLiteral("Root"));
        }
        return relatedNodes(node, relation, allNodes);
    });
}

// Depth first from a category; the first hit ends the walk and the path is assembled on the way back.
QList<QString> CNodemapWrapper::depthSearch(const QString& searchedName, bool& found, const QString& category,
                                            int depth) {
    found = false;
    INode* categoryNode = findNode(category);
    if (!categoryNode || depth > maximumCategoryDepth)
        return QList<QString>();
    for (const QString& child : relatedNodes(categoryNode, ParameterRelation_CategoryFeatures, true)) {
        const QString childName = child.section(QLatin1Char('/'), -1);
        if (childName == searchedName) {
            found = true;
            return {buildPath(categoryNode)};
        }
        QList<QString> below = depthSearch(searchedName, found, childName, depth + 1);
        if (found)
            return QList<QString>({buildPath(categoryNode)}) + below;
    }
    return QList<QString>();
}

template <typename Load>
bool CNodemapWrapper::loadWithCallbacksOff(QString& errorText, Load load) {
    disableCallbacks();
    try {
        load();
    } catch (const GENICAM_NAMESPACE::GenericException& e) {
        errorText = QString::fromUtf8(e.GetDescription());
        enableCallbacks();
        return false;
    }
    enableCallbacks();
    return true;
}

bool CNodemapWrapper::loadFeatureStream(const QString& fileName, QString& errorText) {
    return loadWithCallbacksOff(errorText, [&] {
        Tavrin::CFeaturePersistence::Load(fileName.toUtf8().constData(), m_NodeMap, true);
    });
}

bool CNodemapWrapper::loadFeatureStreamFromString(const QString& featureStream, QString& errorText) {
    return loadWithCallbacksOff(errorText, [&] {
        Tavrin::CFeaturePersistence::LoadFromString(featureStream.toUtf8().constData(), m_NodeMap, true);
    });
}

QString CNodemapWrapper::saveFeatureStreamToString() {
    disableCallbacks();
    GENICAM_NAMESPACE::gcstring text;
    try {
        translateGenICamExceptions([&] { Tavrin::CFeaturePersistence::SaveToString(text, m_NodeMap); });
    } catch (...) {
        enableCallbacks();
        throw;
    }
    enableCallbacks();
    return QString::fromUtf8(text.c_str());
}

}  // namespace Internal
}  // namespace ParameterCollection
