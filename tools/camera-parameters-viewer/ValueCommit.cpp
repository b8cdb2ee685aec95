// Reading typed numbers and checking them against the feature's limits.
#include "ValueCommit.h"
#include <QLocale>
#include <QStringList>
#include <cmath>

using namespace ParameterCollection;

bool CValueCommit::parseAddress(const QString& text, QChar separator, int parts, int base, qint64& value) {
    const QStringList fields = text.split(separator);
    if (fields.size() != parts)
        return false;
    value = 0;
    for (const QString& field : fields) {
        bool ok = false;
        const int byte = field.toInt(&ok, base);
        if (!ok || byte < 0 || byte > 255)
            return false;
        value = (value << 8) | byte;
    }
    return true;
}

// Any form the tool prints is taken back: hexadecimal with 0x, addresses in their notation, else decimal.
bool CValueCommit::parseInteger(const QString& text, const QString& representation, qint64& value) {
    bool ok = false;
    if (text.startsWith("0x", Qt::CaseInsensitive))
        value = text.mid(2).toLongLong(&ok, 16);
    else if (representation == "IPV4Address" && text.contains('.'))
        ok = parseAddress(text, '.', 4, 10, value);
    else if (representation == "MACAddress" && (text.contains(':') || text.contains('-')))
        ok = parseAddress(QString(text).replace('-', ':'), ':', 6, 16, value);
    else
        value = text.toLongLong(&ok, representation == "HexNumber" ? 16 : 10);
    return ok;
}

bool CValueCommit::integer(const QString& typed, const IntegerParameterData& data, qint64& value,
                           QString& problem) {
    const QString text = typed.trimmed();
    if (!parseInteger(text, data.representation, value)) {
        problem = QString("'%1' is not a number").arg(text);
        return false;
    }
    if (value < data.minimum || value > data.maximum) {
        problem = QString("%1 is outside %2 to %3").arg(value).arg(data.minimum).arg(data.maximum);
        return false;
    }
    if (data.increment > 1 && (value - data.minimum) % data.increment != 0) {
        problem =
            QString("%1 is not %2 plus a multiple of %3").arg(value).arg(data.minimum).arg(data.increment);
        return false;
    }
    return true;
}

bool CValueCommit::floating(const QString& typed, const FloatParameterData& data, double& value,
                            QString& problem) {
    const QString text = typed.trimmed();
    bool ok = false;
    value = QLocale::c().toDouble(text, &ok);
    if (!ok)
        value = QLocale().toDouble(text, &ok);
    if (!ok || !std::isfinite(value)) {
        problem = QString("'%1' is not a number").arg(text);
        return false;
    }
    if (value < data.minimum || value > data.maximum) {
        problem = QString("%1 is outside %2 to %3").arg(text).arg(data.minimum).arg(data.maximum);
        return false;
    }
    if (data.hasIncrement && data.increment > 0) {
        const double steps = (value - data.minimum) / data.increment;
        if (std::fabs(steps - std::round(steps)) > 1e-6) {
            problem =
                QString("%1 is not %2 plus a multiple of %3").arg(text).arg(data.minimum).arg(data.increment);
            return false;
        }
    }
    return true;
}
