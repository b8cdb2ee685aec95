// Text forms of a parameter's type, access, visibility and value.
#include "ParameterPrinter.h"
#include <GenApi/GenApi.h>
#include <GenApi/EnumClasses.h>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <cmath>
#include <parametercollection/BooleanParameterData.h>
#include <parametercollection/Exceptions.h>
#include <parametercollection/FloatParameterData.h>
#include <parametercollection/IBooleanParameter.h>
#include <parametercollection/IFloatParameter.h>
#include <parametercollection/IIntegerParameter.h>
#include <parametercollection/IntegerParameterData.h>

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
    if (visibility < GenApi::Beginner || visibility > GenApi::Invisible)
        return QStringLiteral("Undefined");
    const GenICam::gcstring name =
        GenApi::EVisibilityClass::ToString(static_cast<GenApi::EVisibility>(visibility));
    return QString::fromLatin1(name.c_str());
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

QJsonValue CParameterPrinter::typedValue(IParameter& parameter) {
    if (!parameter.isReadable() || parameter.getParameterType() == ParameterType_Command)
        return QJsonValue();
    try {
        if (auto integer = dynamic_cast<IIntegerParameter*>(&parameter))
            return exactInteger(integer->getValue());
        if (auto floating = dynamic_cast<IFloatParameter*>(&parameter)) {
            const double value = floating->getValue();
            return std::isfinite(value) ? QJsonValue(value) : QJsonValue();
        }
        if (auto boolean = dynamic_cast<IBooleanParameter*>(&parameter))
            return boolean->getValue(false, false);
        return parameter.toString();
    } catch (const Core::Exception::BaseException&) {
        return QJsonValue();
    }
}

QJsonValue CParameterPrinter::typedValue(const ParameterData& data) {
    if (auto integer = dynamic_cast<const IntegerParameterData*>(&data))
        return exactInteger(integer->value);
    if (auto floating = dynamic_cast<const FloatParameterData*>(&data))
        return std::isfinite(floating->value) ? QJsonValue(floating->value) : QJsonValue();
    if (auto boolean = dynamic_cast<const BooleanParameterData*>(&data))
        return boolean->value;
    return data.valueText;
}

void CParameterPrinter::insertValue(QJsonObject& object, IParameter& parameter) {
    const QString text = valueText(parameter);
    const QJsonValue typed = typedValue(parameter);
    object.insert("value", typed.isString() && !typed.toString().startsWith(exactIntegerMark) ? text : typed);
    if (!typed.isString() || typed.toString().startsWith(exactIntegerMark))
        object.insert("text", text);
}

QJsonObject CParameterPrinter::describe(IParameter& parameter, bool withDescriptions) {
    QJsonObject object{{"name", parameter.getFullName()},
                       {"type", typeText(parameter.getParameterType())},
                       {"access", accessText(parameter)},
                       {"visibility", visibilityText(parameter.getVisibility())}};
    insertValue(object, parameter);
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
        printObject(object);
        return;
    }
    QString value = object.contains("text") ? object["text"].toString() : object["value"].toString();
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
    // People read the value as text: "value" shows what "text" holds, which is not repeated.
    for (auto it = object.begin(); it != object.end(); ++it) {
        if (it.key() == "text")
            continue;
        if (it.key() == "value" && object.contains("text")) {
            m_Out << "value: " << object["text"].toString() << "\n";
            continue;
        }
        const QString value =
            it.value().isArray()
                ? QString::fromUtf8(QJsonDocument(it.value().toArray()).toJson(QJsonDocument::Compact))
                : it.value().toVariant().toString().remove(exactIntegerMark);
        m_Out << it.key() << ": " << value << "\n";
    }
}
