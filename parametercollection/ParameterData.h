// A snapshot of a parameter's state; typed snapshots add their own fields.
#ifndef PARAMETERCOLLECTION_PARAMETERDATA_H
#define PARAMETERCOLLECTION_PARAMETERDATA_H

#include "ParameterCollectionExport.h"
#include "ParameterType.h"
#include <QString>

namespace ParameterCollection {

class PARAMETERCOLLECTION_EXPORT ParameterData {
public:
    virtual ~ParameterData();

    EParameterType parameterType = ParameterType_Undefined;
    int visibility = 99;  // GenApi's undefined visibility: no node
    bool isReadable = false;
    bool isWriteable = false;
    bool isImplemented = false;
    bool isEmpty = true;
    QString valueText;  // the text at the last refresh at which the parameter was readable
};

}  // namespace ParameterCollection

#endif
