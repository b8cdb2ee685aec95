// The kind of a parameter, following the principal interface of its GenApi node.
#ifndef PARAMETERCOLLECTION_PARAMETERTYPE_H
#define PARAMETERCOLLECTION_PARAMETERTYPE_H

namespace ParameterCollection {

enum EParameterType : int {
    ParameterType_Undefined = 0,
    ParameterType_Integer = 1,
    ParameterType_Boolean = 2,
    ParameterType_Float = 3,
    ParameterType_Command = 4,
    ParameterType_String = 5,
    ParameterType_Enumeration = 6,
    ParameterType_Category = 7,
    ParameterType_Register = 8
};

}  // namespace ParameterCollection

#endif
