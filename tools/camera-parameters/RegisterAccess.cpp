// Register transfers go through the port node, which invalidates what depends on it after a write, so
// that features read afterwards show what the write changed.
#include "RegisterAccess.h"
#include "ParameterPrinter.h"
#include <QRegularExpression>
#include <stdexcept>

using namespace GenApi;

namespace {

const QRegularExpression registerName("^R\\[(0[xX][0-9a-fA-F]+|[0-9]+)(?::([0-9]+))?\\]$");

bool parseInteger(const QString& text, qint64& value) {
    bool ok = false;
    value = text.startsWith("0x", Qt::CaseInsensitive) ? text.mid(2).toLongLong(&ok, 16)
                                                       : text.toLongLong(&ok, 10);
    return ok;
}

QString hex(quint64 value, int digits) {
    return "0x" + QString::number(value, 16).rightJustified(digits, QLatin1Char('0'));
}

}  // namespace

bool CRegisterAccess::isRegisterName(const QString& name) {
    return registerName.match(name).hasMatch();
}

CRegisterAccess::CRegisterAccess(INodeMap* nodeMap, const QString& name) : m_NodeMap(nodeMap), m_Name(name) {
    const QRegularExpressionMatch match = registerName.match(name);
    qint64 address = 0;
    if (!match.hasMatch() || !parseInteger(match.captured(1), address))
        throw std::invalid_argument("'" + name.toStdString() +
                                    "' is no register: use R[0xADDRESS] or "
                                    "R[0xADDRESS:LENGTH].");
    m_Address = address;
    if (!match.captured(2).isEmpty())
        m_Length = match.captured(2).toLongLong();
    if (m_Length < 1 || m_Length > 4096)
        throw std::invalid_argument("A register is 1 to 4096 bytes long.");
    if (!port())
        throw std::invalid_argument("The device has no port to reach registers through.");
}

IPort* CRegisterAccess::port() const {
    if (INode* device = m_NodeMap->GetNode("Device")) {
        if (IPort* port = dynamic_cast<IPort*>(device))
            return port;
    }
    NodeList_t nodes;
    m_NodeMap->GetNodes(nodes);
    for (INode* node : nodes) {
        if (node->GetPrincipalInterfaceType() == intfIPort)
            return dynamic_cast<IPort*>(node);
    }
    return nullptr;
}

// The byte order most registers of the description declare; GenICam's default is little-endian.
bool CRegisterAccess::bigEndian() const {
    NodeList_t nodes;
    m_NodeMap->GetNodes(nodes);
    int big = 0;
    int little = 0;
    for (INode* node : nodes) {
        GENICAM_NAMESPACE::gcstring value, attribute;
        if (!node->GetProperty("Endianess", value, attribute))
            continue;
        (value == "BigEndian" ? big : little) += 1;
    }
    return big > little;
}

QJsonObject CRegisterAccess::read() {
    QByteArray bytes(static_cast<int>(m_Length), '\0');
    port()->Read(bytes.data(), m_Address, m_Length);
    QJsonObject object{{"name", "R[" + hex(static_cast<quint64>(m_Address), 4) + "]"},
                       {"address", hex(static_cast<quint64>(m_Address), 4)},
                       {"length", static_cast<double>(m_Length)},
                       {"bytes", QString::fromLatin1(bytes.toHex(' '))}};
    if (m_Length <= 8) {
        quint64 value = 0;
        const bool big = bigEndian();
        for (int i = 0; i < m_Length; ++i) {
            const quint64 byte = static_cast<quint8>(bytes.at(big ? i : static_cast<int>(m_Length) - 1 - i));
            value = (value << 8) | byte;
        }
        object.insert("value", value <= quint64(INT64_MAX) ? CParameterPrinter::exactInteger(qint64(value))
                                                           : QJsonValue(QString::number(value)));
        object.insert("text", hex(value, static_cast<int>(m_Length) * 2));
    }
    return object;
}

void CRegisterAccess::write(const QString& text) {
    qint64 value = 0;
    if (m_Length > 8 || !parseInteger(text, value))
        throw std::domain_error("Value '" + text.toStdString() + "' refused: a register of " +
                                std::to_string(m_Length) + " bytes takes an integer (0x... or decimal).");
    QByteArray bytes(static_cast<int>(m_Length), '\0');
    const bool big = bigEndian();
    quint64 remaining = static_cast<quint64>(value);
    for (int i = 0; i < m_Length; ++i) {
        bytes[big ? static_cast<int>(m_Length) - 1 - i : i] = static_cast<char>(remaining & 0xff);
        remaining >>= 8;
    }
    port()->Write(bytes.constData(), m_Address, m_Length);
}

bool CRegisterAccess::placeOf(INode* node, int64_t& address, int64_t& length) {
    for (int depth = 0; node && depth < 4; ++depth) {
        if (IRegister* reg = dynamic_cast<IRegister*>(node)) {
            if (IsReadable(reg) || IsWritable(reg)) {
                address = reg->GetAddress();
                length = reg->GetLength();
                return true;
            }
            return false;
        }
        GENICAM_NAMESPACE::gcstring value, attribute;
        if (!node->GetProperty("pValue", value, attribute))
            return false;
        node = node->GetNodeMap()->GetNode(value);
    }
    return false;
}
