// Typed parameter names: one full name each ("@NodeMap/Feature", alternatives joined by "|", optional
// "/Alias"), so that asking for an integer with a float name does not compile.
#ifndef PARAMETERCOLLECTION_PARAMETERNAMES_H
#define PARAMETERCOLLECTION_PARAMETERNAMES_H

#include "ParameterCollectionExport.h"
#include <QString>

namespace ParameterCollection {

#define PARAMETERCOLLECTION_DECLARE_PARAMETER_NAME(ClassName)                                    \
    class PARAMETERCOLLECTION_EXPORT ClassName {                                                 \
    public:                                                                                      \
        explicit ClassName(const QString& fullName) : m_FullName(fullName) {}                    \
        const QString& getFullName() const { return m_FullName; }                                \
        bool operator==(const ClassName& other) const { return m_FullName == other.m_FullName; } \
                                                                                                 \
    private:                                                                                     \
        QString m_FullName;                                                                      \
    }

PARAMETERCOLLECTION_DECLARE_PARAMETER_NAME(ParameterName);
PARAMETERCOLLECTION_DECLARE_PARAMETER_NAME(IntegerParameterName);
PARAMETERCOLLECTION_DECLARE_PARAMETER_NAME(FloatParameterName);
PARAMETERCOLLECTION_DECLARE_PARAMETER_NAME(BooleanParameterName);
PARAMETERCOLLECTION_DECLARE_PARAMETER_NAME(CommandParameterName);
PARAMETERCOLLECTION_DECLARE_PARAMETER_NAME(EnumParameterName);
PARAMETERCOLLECTION_DECLARE_PARAMETER_NAME(StringParameterName);
PARAMETERCOLLECTION_DECLARE_PARAMETER_NAME(PortParameterName);
PARAMETERCOLLECTION_DECLARE_PARAMETER_NAME(FileParameterName);

#undef PARAMETERCOLLECTION_DECLARE_PARAMETER_NAME

}  // namespace ParameterCollection

#endif
