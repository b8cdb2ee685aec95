// Tree and description of features through the collection, the category tree through the JSON export.
#include "FeatureInspector.h"
#include "RegisterAccess.h"
#include "NameSuggestion.h"
#include "ParameterTool.h"
#include <GenApi/GenApi.h>
#include <GenApiEngine/NodeMapDescription.h>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QThread>
#include <parametercollection/Exceptions.h>
#include <parametercollection/ICommandParameter.h>
#include <parametercollection/IEnumParameter.h>
#include <parametercollection/IFloatParameter.h>
#include <parametercollection/IIntegerParameter.h>
#include <parametercollection/internal/NodemapToJsonConverter.h>

using namespace ParameterCollection;

namespace {

const QStringList visibilityOrder = {"Beginner", "Expert", "Guru", "Invisible"};

// A limit or other optional figure; absent (null) when the feature cannot answer it.
template <typename Read>
QJsonValue optional(Read read) {
    try {
        return QJsonValue(read());
    } catch (const Core::Exception::BaseException&) {
        return QJsonValue();
    }
}

// The category tree alone: a feature's own children (the inputs of its formula, say) belong to describe.
QJsonObject categoriesOnly(QJsonObject object) {
    if (object["type"].toString() != "ICategory") {
        object.remove("children");
        return object;
    }
    QJsonArray children;
    for (const QJsonValue& child : object["children"].toArray())
        children.append(categoriesOnly(child.toObject()));
    object["children"] = children;
    return object;
}

QJsonArray names(const QList<QString>& fullNames) {
    QJsonArray array;
    for (const QString& fullName : fullNames)
        array.append(fullName);
    return array;
}

}  // namespace

CFeatureInspector::CFeatureInspector(CParameterCollection& collection, GenApi::INodeMap* nodeMap,
                                     QTextStream& out, QTextStream& err, bool json, const QString& visibility)
    : m_Collection(collection),
      m_NodeMap(nodeMap),
      m_Out(out),
      m_Err(err),
      m_Json(json),
      m_MaxVisibility(visibilityOrder.indexOf(visibility)),
      m_Printer(out, json) {}

QString CFeatureInspector::featureName(const QString& name) const {
    return name.section(QLatin1Char('/'), -1);
}

GenApi::INode* CFeatureInspector::node(const QString& name) const {
    return m_NodeMap ? m_NodeMap->GetNode(featureName(name).toUtf8().constData()) : nullptr;
}

int CFeatureInspector::tree(const QString& name) {
    const QString start = name.isEmpty() ? QStringLiteral("Root") : name;
    GenApi::INode* root = node(start);
    if (!root) {
        m_Err << CNameSuggestion::unknownParameterText(start, m_NodeMap);
        return CParameterTool::UnknownParameter;
    }
    const QJsonObject json = categoriesOnly(Internal::CNodemapToJsonConverter::getJson(root));
    if (m_Json) {
        m_Printer.printObject(jsonTree(json));
        return CParameterTool::Done;
    }
    printTree(json, 0);
    return CParameterTool::Done;
}

void CFeatureInspector::printTree(const QJsonObject& object, int depth) {
    if (object.isEmpty() || visibilityOrder.indexOf(object["visibility"].toString()) > m_MaxVisibility)
        return;
    const QString identifier = object["identifier"].toString();
    QString line = QString(depth * 2, QLatin1Char(' ')) + identifier;
    QSharedPointer<IParameter> parameter =
        object["type"].toString() == "ICategory"
            ? nullptr
            : m_Collection.get(ParameterName("@CameraDevice/" + identifier));
    if (parameter) {
        line = line.leftJustified(44) + " " +
               CParameterPrinter::typeText(parameter->getParameterType()).leftJustified(12) +
               CParameterPrinter::accessText(*parameter).leftJustified(4) + " " +
               CParameterPrinter::valueText(*parameter);
    }
    m_Out << line << "\n";
    for (const QJsonValue& child : object["children"].toArray())
        printTree(child.toObject(), depth + 1);
}

// The tree in the terms list and get use: full names, the same type names, access and values on features;
// categories, and only they, have children. What the visibility hides is left out.
QJsonObject CFeatureInspector::jsonTree(const QJsonObject& node) {
    const QString name = "@CameraDevice/" + node["identifier"].toString();
    QJsonObject object;
    if (node["type"].toString() == "ICategory") {
        object = {{"name", name}, {"type", "Category"}, {"visibility", node["visibility"]}};
        QJsonArray children;
        for (const QJsonValue& child : node["children"].toArray()) {
            if (visibilityOrder.indexOf(child.toObject()["visibility"].toString()) <= m_MaxVisibility)
                children.append(jsonTree(child.toObject()));
        }
        object["children"] = children;
    } else if (QSharedPointer<IParameter> parameter = m_Collection.get(ParameterName(name))) {
        object = m_Printer.describe(*parameter, false);
    } else {
        object = {
            {"name", name}, {"type", node["type"].toString().mid(1)}, {"visibility", node["visibility"]}};
    }
    object["displayName"] = node["displayName"];
    return object;
}

QJsonObject CFeatureInspector::description(IParameter& parameter) {
    QSharedPointer<IAdvancedParameterAccess> properties = parameter.getAdvancedParameterAccess();
    auto property = [&](const char* key) { return properties->getPropertyOrDefault(key, QString()); };
    QJsonObject object{{"name", parameter.getFullName()},
                       {"displayName", property("DisplayName")},
                       {"description", property("Description")},
                       {"tooltip", property("Tooltip")},
                       {"type", CParameterPrinter::typeText(parameter.getParameterType())},
                       {"access", CParameterPrinter::accessText(parameter)},
                       {"visibility", CParameterPrinter::visibilityText(parameter.getVisibility())},
                       {"unit", property("Unit")},
                       {"representation", property("Representation")}};
    CParameterPrinter::insertValue(object, parameter);
    if (auto integer = dynamic_cast<IIntegerParameter*>(&parameter)) {
        object["min"] = optional([&] { return CParameterPrinter::exactInteger(integer->getMinimum()); });
        object["max"] = optional([&] { return CParameterPrinter::exactInteger(integer->getMaximum()); });
        object["increment"] =
            optional([&] { return CParameterPrinter::exactInteger(integer->getIncrement()); });
    } else if (auto floating = dynamic_cast<IFloatParameter*>(&parameter)) {
        object["min"] = optional([&] { return floating->getMinimum(); });
        object["max"] = optional([&] { return floating->getMaximum(); });
        if (floating->hasIncrement())
            object["increment"] = optional([&] { return floating->getIncrement(); });
    } else if (auto enumeration = dynamic_cast<IEnumParameter*>(&parameter)) {
        QJsonArray entries;
        for (const QString& entry : enumeration->getAllValues()) {
            const QString access =
                enumeration->getAdvancedValueProperties(entry)->getPropertyOrDefault("AccessMode", "");
            entries.append(QJsonObject{{"name", entry}, {"access", access}});
        }
        object["entries"] = entries;
    }
    object["selectingFeatures"] = names(m_Collection.getParameterRelation(
        parameter.getFullName(), ParameterRelation_SelectingFeatures, false));
    object["selectedFeatures"] = names(m_Collection.getParameterRelation(
        parameter.getFullName(), ParameterRelation_SelectedFeatures, false));
    if (GenApi::INode* found = node(parameter.getName())) {
        if (GenApi::INode* alias = found->GetAlias())
            object["alias"] = QString::fromUtf8(alias->GetName().c_str());
        insertPlace(object, found);
    }
    return object;
}

// Where the feature's register lies, for raw access with R[ADDRESS:LENGTH]; nothing for computed features.
void CFeatureInspector::insertPlace(QJsonObject& object, GenApi::INode* node) {
    int64_t address = 0;
    int64_t length = 0;
    try {
        if (!CRegisterAccess::placeOf(node, address, length))
            return;
    } catch (const GenICam::GenericException&) {
        return;
    }
    object["address"] = "0x" + QString::number(static_cast<quint64>(address), 16).rightJustified(4, '0');
    object["length"] = static_cast<double>(length);
}

int CFeatureInspector::describe(const QString& name) {
    QSharedPointer<IParameter> parameter = m_Collection.get(ParameterName(name));
    if (!parameter) {
        m_Err << CNameSuggestion::unknownParameterText(name, m_NodeMap);
        return CParameterTool::UnknownParameter;
    }
    m_Printer.printObject(description(*parameter));
    return CParameterTool::Done;
}

int CFeatureInspector::genicam() {
    try {
        const QString xml = QString::fromStdString(GenApiEngine::descriptionText(m_NodeMap));
        if (m_Json)
            m_Printer.printObject({{"description", xml}});
        else
            m_Out << xml;
    } catch (const GenICam::GenericException& e) {
        m_Err << "No camera description: " << e.GetDescription() << "\n";
        return CParameterTool::Failed;
    }
    return CParameterTool::Done;
}

int CFeatureInspector::execute(const QString& name, double seconds) {
    QSharedPointer<IParameter> found = m_Collection.get(ParameterName(name));
    QSharedPointer<ICommandParameter> command = found.dynamicCast<ICommandParameter>();
    if (!command) {
        m_Err << (found ? "Parameter '" + name + "' is no command.\n"
                        : CNameSuggestion::unknownParameterText(name, m_NodeMap));
        return found ? CParameterTool::WrongUsage : CParameterTool::UnknownParameter;
    }
    try {
        command->execute(true);
        QElapsedTimer clock;
        clock.start();
        while (!command->isDone()) {
            if (clock.elapsed() > seconds * 1000) {
                m_Err << "Command '" << command->getFullName() << "' still runs after " << seconds << " s.\n";
                return CParameterTool::Failed;
            }
            QThread::msleep(10);
        }
    } catch (const Core::Exception::InvalidOperationException& e) {
        m_Err << "Command '" << command->getFullName() << "' cannot be executed: " << e.getMessage() << "\n";
        return CParameterTool::AccessRefused;
    }
    if (m_Json)
        m_Printer.printObject({{"name", command->getFullName()}, {"done", true}});
    else
        m_Out << command->getFullName() << " done\n";
    return CParameterTool::Done;
}
