// How camera-parameters shows parameters: aligned table rows for people, JSON objects for scripts.
#ifndef TOOLS_CAMERAPARAMETERS_PARAMETERPRINTER_H
#define TOOLS_CAMERAPARAMETERS_PARAMETERPRINTER_H

#include <QJsonObject>
#include <QSharedPointer>
#include <QString>
#include <QTextStream>
#include <parametercollection/IParameter.h>
#include <parametercollection/ParameterData.h>

class CParameterPrinter {
public:
    CParameterPrinter(QTextStream& out, bool json);

    // One parameter: name, type, access, visibility, value (and unit); in JSON also its descriptions.
    void print(ParameterCollection::IParameter& parameter);
    void printHeader();
    // A JSON object on one line, or "key: value" lines.
    void printObject(const QJsonObject& object);
    // A 64-bit integer that prints exactly in text and JSON: a JSON number holds 53 bits in Qt 5, so a wider
    // one travels marked in a string that printObject turns back into the number.
    static QJsonValue exactInteger(qint64 value);
    QJsonObject describe(ParameterCollection::IParameter& parameter, bool withDescriptions);
    // The value for JSON: a number for integers and floats, true or false for booleans, the text for the
    // others; null when it cannot be read.
    static QJsonValue typedValue(ParameterCollection::IParameter& parameter);
    // The same from a snapshot, as a watch receives it.
    static QJsonValue typedValue(const ParameterCollection::ParameterData& data);
    // "value" as typedValue gives it, and "text" as people read it when the two differ in kind.
    static void insertValue(QJsonObject& object, ParameterCollection::IParameter& parameter);

    static QString typeText(ParameterCollection::EParameterType type);
    static QString accessText(ParameterCollection::IParameter& parameter);
    // GenApi's access text for what a snapshot says.
    static QString accessText(bool implemented, bool readable, bool writeable);
    static QString visibilityText(int visibility);
    // The value as text, "" when it cannot be read; a failure to read shows its message.
    static QString valueText(ParameterCollection::IParameter& parameter);

private:
    QTextStream& m_Out;
    bool m_Json;
};

#endif
