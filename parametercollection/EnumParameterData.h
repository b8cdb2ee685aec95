// Snapshot of an enumeration parameter: the base fields, the current entry's display name and the
// settable entries with their display names.
#ifndef PARAMETERCOLLECTION_ENUMPARAMETERDATA_H
#define PARAMETERCOLLECTION_ENUMPARAMETERDATA_H

#include "ParameterData.h"
#include <QVector>

namespace ParameterCollection {

class PARAMETERCOLLECTION_EXPORT EnumParameterData : public ParameterData {
public:
    EnumParameterData() { parameterType = ParameterType_Enumeration; }

    QString valueDisplayName;
    QVector<QString> settableValues;
    QVector<QString> settableValueDisplayNames;
};

}  // namespace ParameterCollection

#endif
