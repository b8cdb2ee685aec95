// Text forms of a parameter's type, access, visibility and value.
#include "ParameterPrinter.h"
#include <parametercollection/internal/VisibilityText.h>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <parametercollection/Exceptions.h>

using namespace ParameterCollection;

namespace {

// Marks a 64-bit integer carried as a JSON string; no feature text starts with it.
const char exactIntegerMark[] = "#int64#";
const int nameWidth = 44;
const int typeWidth = 12;
const int accessWidth = 7;
const int visibilityWidth = 11;

QString property(IParameter& parameter, const char* key) {
    try {
        return parameter.getAdvancedParameterAccess()->getPropertyOrDefault(key, QString());
    } catch (const Core::Exception::BaseException&) {
        return QString();
    }
}

}  // namespace

CParameterPrinter::CParameterPrinter(QTextStream& out, bool json) : m_Out(out), m_Json(json) {}

QString CParameterPrinter::typeText(EParameterType type) {
    switch (type) {
        case ParameterType_Integer:
            return "Integer";
        case ParameterType_Boolean:
            return "Boolean";
        case ParameterType_Float:
            return "Float";
        case ParameterType_Command:
            return "Command";
        case ParameterType_String:
            return "String";
        case ParameterType_Enumeration:
            return "Enumeration";
        case ParameterType_Category:
            return "Category";
        case ParameterType_Register:
            return "Register";
        default:
            return "Other";
    }
}

QString CParameterPrinter::accessText(IParameter& parameter) {
    if (!parameter.isImplemented())
        return "NI";
    if (!parameter.isAvailable())
        return "NA";
    return accessText(true, parameter.isReadable(), parameter.isWriteable());
}

QString CParameterPrinter::accessText(bool implemented, bool readable, bool writeable) {
    if (!implemented)
        return "NI";
    if (readable && writeable)
        return "RW";
    if (readable)
        return "RO";
    return writeable ? "WO" : "NA";
}

QString CParameterPrinter::visibilityText(int visibility) {
    return Internal::visibilityText(static_cast<GenApi::EVisibility>(visibility),
                                    QStringLiteral("Undefined"));
}

QString CParameterPrinter::valueText(IParameter& parameter) {
    if (!parameter.isReadable() || parameter.getParameterType() == ParameterType_Command)
        return QString();
    try {
        return parameter.toString();
    } catch (const Core::Exception::BaseException& e) {
        return "<" + e.getMessage() + ">";
    }
}

QJsonObject CParameterPrinter::describe(IParameter& parameter, bool withDescriptions) {
    QJsonObject object{{"name", parameter.getFullName()},
                       {"type", typeText(parameter.getParameterType())},
                       {"access", accessText(parameter)},
                       {"visibility", visibilityText(parameter.getVisibility())},
                       {"value", valueText(parameter)}};
    const QString unit = property(parameter, "Unit");
    if (!unit.isEmpty())
        object.insert("unit", unit);
    if (withDescriptions) {
        object.insert("displayName", property(parameter, "DisplayName"));
        object.insert("tooltip", property(parameter, "Tooltip"));
        object.insert("isFeature", property(parameter, "IsFeature") == "true");
    }
    return object;
}

void CParameterPrinter::printHeader() {
    if (m_Json)
        return;
    m_Out << QString("NAME").leftJustified(nameWidth) << QString("TYPE").leftJustified(typeWidth)
          << QString("ACCESS").leftJustified(accessWidth)
          << QString("VISIBILITY").leftJustified(visibilityWidth) << "VALUE\n";
}

void CParameterPrinter::print(IParameter& parameter) {
    const QJsonObject object = describe(parameter, false);
    if (m_Json) {
        m_Out << QJsonDocument(object).toJson(QJsonDocument::Compact) << "\n";
        return;
    }
    QString value = object["value"].toString();
    if (value.size() > 48)
        value = value.left(45) + "...";
    if (object.contains("unit") && !value.isEmpty())
        value += " " + object["unit"].toString();
    m_Out << object["name"].toString().leftJustified(nameWidth - 1) << " "
          << object["type"].toString().leftJustified(typeWidth)
          << object["access"].toString().leftJustified(accessWidth)
          << object["visibility"].toString().leftJustified(visibilityWidth) << value << "\n";
}

QJsonValue CParameterPrinter::exactInteger(qint64 value) {
    constexpr qint64 exactInDouble = qint64(1) << 53;
    if (value >= -exactInDouble && value <= exactInDouble)
        return QJsonValue(static_cast<double>(value));
    return QJsonValue(QString(exactIntegerMark) + QString::number(value));
}

void CParameterPrinter::printObject(const QJsonObject& object) {
    static const QRegularExpression markedInJson(QString("\"") + exactIntegerMark + "(-?[0-9]+)\"");
    if (m_Json) {
        m_Out << QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact))
                     .replace(markedInJson, "\\1")
              << "\n";
        return;
    }
    for (auto it = object.begin(); it != object.end(); ++it) {
        const QString value =
            it.value().isArray()
                ? QString::fromUtf8(QJsonDocument(it.value().toArray()).toJson(QJsonDocument::Compact))
                : it.value().toVariant().toString().remove(exactIntegerMark);
        m_Out << it.key() << ": " << value << "\n";
    }
}
