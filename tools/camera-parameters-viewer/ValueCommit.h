// What a user typed into a number's editor, checked before anything reaches the device: read in the
// representation the feature shows (decimal, hexadecimal, IPv4 or MAC address) and held against the
// feature's minimum, maximum and increment, so that the value written is exactly the one committed.
#ifndef TOOLS_CAMERAPARAMETERSVIEWER_VALUECOMMIT_H
#define TOOLS_CAMERAPARAMETERSVIEWER_VALUECOMMIT_H

#include <QString>
#include <parametercollection/FloatParameterData.h>
#include <parametercollection/IntegerParameterData.h>

class CValueCommit {
public:
    // True with the value when the text is a number the feature takes; false with the reason otherwise.
    static bool integer(const QString& text, const ParameterCollection::IntegerParameterData& data,
                        qint64& value, QString& problem);
    static bool floating(const QString& text, const ParameterCollection::FloatParameterData& data,
                         double& value, QString& problem);

private:
    static bool parseInteger(const QString& text, const QString& representation, qint64& value);
    static bool parseAddress(const QString& text, QChar separator, int parts, int base, qint64& value);
};

#endif
