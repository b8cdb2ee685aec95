// Raw register access by address, as "R[0x0108]" (four bytes) or "R[0x0108:8]" (a length in bytes), through
// the device port of a node map, for what no feature of the description shows.
#ifndef TOOLS_CAMERAPARAMETERS_REGISTERACCESS_H
#define TOOLS_CAMERAPARAMETERS_REGISTERACCESS_H

#include <GenApi/GenApi.h>
#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <cstdint>

class CRegisterAccess {
public:
    // True for names of the form R[ADDRESS] or R[ADDRESS:LENGTH]; the address in hexadecimal (0x...) or
    // decimal.
    static bool isRegisterName(const QString& name);

    // Reads or writes through the map's "Device" port (or its first port); throws std::invalid_argument for
    // a malformed name or value and GenICam exceptions for a refused transfer.
    CRegisterAccess(GenApi::INodeMap* nodeMap, const QString& name);
    QJsonObject read();
    // An integer (0x... or decimal) of the register's length, in the byte order of the description; throws
    // std::domain_error for a value that is no such integer.
    void write(const QString& value);

    // The address and length of the register behind a feature (itself or through pValue), if there is one.
    static bool placeOf(GenApi::INode* node, int64_t& address, int64_t& length);

private:
    GenApi::IPort* port() const;
    bool bigEndian() const;

    GenApi::INodeMap* m_NodeMap;
    QString m_Name;
    int64_t m_Address = 0;
    int64_t m_Length = 4;
};

#endif
