// GenICam's exception classes (not derived from std::exception) and the macros that raise them.
#ifndef GENICAM_GCEXCEPTION_H
#define GENICAM_GCEXCEPTION_H

#include <Base/GCString.h>
#include <cstdarg>
#include <sstream>
#include <string>

namespace GENICAM_NAMESPACE {

class GCBASE_RTTI_CLASS_API GenericException {
public:
    GenericException(const char* pDescription, const char* pSourceFileName, unsigned int SourceLine);
    GenericException(const char* pDescription, const char* pSourceFileName, unsigned int SourceLine,
                     const char* pExceptionType);
    GenericException(const char* pDescription, const char* pSourceFileName, unsigned int SourceLine,
                     const char* pEntryPoint, const char* pErrorNodeName, const char* pExceptionType);
    virtual const char* GetDescription() const throw();
    virtual const char* GetSourceFileName() const throw();
    virtual unsigned int GetSourceLine() const throw();
    virtual const char* what() const throw();
    virtual ~GenericException() throw();

private:
    void AssembleMessage();

    gcstring m_What;
    gcstring m_ExceptionType;
    gcstring m_Description;
    gcstring m_SourceFileName;
    unsigned int m_SourceLine;
    gcstring m_EntryPoint;
    gcstring m_ErrorNodeName;
};

#define DECLARE_EXCEPTION(name)                                                                              \
    class GCBASE_RTTI_CLASS_API name : public GENICAM_NAMESPACE::GenericException {                          \
    public:                                                                                                  \
        name(const char* pDescription, const char* pSourceFileName, int SourceLine)                          \
            : GenericException(pDescription, pSourceFileName, SourceLine) {}                                 \
        name(const char* pDescription, const char* pSourceFileName, int SourceLine, const char* pExType)     \
            : GenericException(pDescription, pSourceFileName, SourceLine, pExType) {}                        \
        name(const char* pDescription, const char* pSourceFileName, int SourceLine, const char* pEntryPoint, \
             const char* pErrorNodeName, const char* pExType)                                                \
            : GenericException(pDescription, pSourceFileName, SourceLine, pEntryPoint, pErrorNodeName,       \
                               pExType) {}                                                                   \
    }

DECLARE_EXCEPTION(BadAllocException);
DECLARE_EXCEPTION(InvalidArgumentException);
DECLARE_EXCEPTION(OutOfRangeException);
DECLARE_EXCEPTION(PropertyException);
DECLARE_EXCEPTION(RuntimeException);
DECLARE_EXCEPTION(LogicalErrorException);
DECLARE_EXCEPTION(AccessException);
DECLARE_EXCEPTION(TimeoutException);
DECLARE_EXCEPTION(DynamicCastException);

// Builds an exception of type E from a printf-style text and remembers where it was raised.
template <typename E>
class ExceptionReporter {
public:
    ExceptionReporter(const char* pFileName, int LineNumber)
        : m_SourceFileName(pFileName), m_SourceLine(LineNumber), m_ExceptionType("") {}
    ExceptionReporter(const char* pFileName, int LineNumber, const char* pExceptionType)
        : m_SourceFileName(pFileName), m_SourceLine(LineNumber), m_ExceptionType(pExceptionType) {}

    E Report(const char* pFormat, ...) {
        char buffer[2048];
        va_list vap;
        va_start(vap, pFormat);
        vsnprintf(buffer, sizeof(buffer), pFormat, vap);
        va_end(vap);
        return Build(buffer);
    }
    E Report() { return Build(""); }
    E Report(const std::string& s) { return Build(s.c_str()); }
    E Report(const std::stringstream& s) { return Build(s.str().c_str()); }

private:
    E Build(const char* pText) {
        if (m_ExceptionType.empty()) {
            return E(pText, m_SourceFileName.c_str(), m_SourceLine);
        }
        return E(pText, m_SourceFileName.c_str(), m_SourceLine, m_ExceptionType.c_str());
    }

    gcstring m_SourceFileName;
    int m_SourceLine;
    gcstring m_ExceptionType;
};

#define GENERIC_EXCEPTION \
    GENICAM_NAMESPACE::ExceptionReporter<GENICAM_NAMESPACE::GenericException>(__FILE__, __LINE__).Report
#define BAD_ALLOC_EXCEPTION                                                                         \
    GENICAM_NAMESPACE::ExceptionReporter<GENICAM_NAMESPACE::BadAllocException>(__FILE__, __LINE__,  \
                                                                               "BadAllocException") \
        .Report
#define INVALID_ARGUMENT_EXCEPTION                                                     \
    GENICAM_NAMESPACE::ExceptionReporter<GENICAM_NAMESPACE::InvalidArgumentException>( \
        __FILE__, __LINE__, "InvalidArgumentException")                                \
        .Report
#define OUT_OF_RANGE_EXCEPTION                                                                          \
    GENICAM_NAMESPACE::ExceptionReporter<GENICAM_NAMESPACE::OutOfRangeException>(__FILE__, __LINE__,    \
                                                                                 "OutOfRangeException") \
        .Report
#define PROPERTY_EXCEPTION                                                                          \
    GENICAM_NAMESPACE::ExceptionReporter<GENICAM_NAMESPACE::PropertyException>(__FILE__, __LINE__,  \
                                                                               "PropertyException") \
        .Report
#define RUNTIME_EXCEPTION                                                                         \
    GENICAM_NAMESPACE::ExceptionReporter<GENICAM_NAMESPACE::RuntimeException>(__FILE__, __LINE__, \
                                                                              "RuntimeException") \
        .Report
#define LOGICAL_ERROR_EXCEPTION                                                                             \
    GENICAM_NAMESPACE::ExceptionReporter<GENICAM_NAMESPACE::LogicalErrorException>(__FILE__, __LINE__,      \
                                                                                   "LogicalErrorException") \
        .Report
#define ACCESS_EXCEPTION                                                                         \
    GENICAM_NAMESPACE::ExceptionReporter<GENICAM_NAMESPACE::AccessException>(__FILE__, __LINE__, \
                                                                             "AccessException")  \
        .Report
#define TIMEOUT_EXCEPTION                                                                         \
    GENICAM_NAMESPACE::ExceptionReporter<GENICAM_NAMESPACE::TimeoutException>(__FILE__, __LINE__, \
                                                                              "TimeoutException") \
        .Report
#define DYNAMICCAST_EXCEPTION                                                                             \
    GENICAM_NAMESPACE::ExceptionReporter<GENICAM_NAMESPACE::DynamicCastException>(__FILE__, __LINE__,     \
                                                                                  "DynamicCastException") \
        .Report

#define CHECK_RANGE_I64(_Value, _Min, _Max, _Inc)                                                        \
    if ((int64_t)(_Value) < (int64_t)(_Min))                                                             \
        throw OUT_OF_RANGE_EXCEPTION("Value = %" PRId64 " must be equal or greater than Min = %" PRId64, \
                                     (int64_t)(_Value), (int64_t)(_Min));                                \
    else if ((int64_t)(_Value) > (int64_t)(_Max))                                                        \
        throw OUT_OF_RANGE_EXCEPTION("Value = %" PRId64 " must be equal or smaller than Max = %" PRId64, \
                                     (int64_t)(_Value), (int64_t)(_Max));                                \
    else if (0 == (_Inc))                                                                                \
        throw LOGICAL_ERROR_EXCEPTION("Increment must not equal 0!");                                    \
    else if (((int64_t)(_Value) - (int64_t)(_Min)) % (int64_t)(_Inc) != 0)                               \
        throw OUT_OF_RANGE_EXCEPTION("The difference between Value = %" PRId64 " and Min = %" PRId64     \
                                     " must be dividable without rest by Inc = %" PRId64,                \
                                     (int64_t)(_Value), (int64_t)(_Min), (int64_t)(_Inc));

#define CHECK_RANGE_FLT(_Value, _Min, _Max)                                                          \
    if ((_Value) < (_Min))                                                                           \
        throw OUT_OF_RANGE_EXCEPTION("Value %f must be greater than or equal %f", (_Value), (_Min)); \
    else if ((_Value) > (_Max))                                                                      \
        throw OUT_OF_RANGE_EXCEPTION("Value %f must be smaller than or equal %f", (_Value), (_Max));

#define CHECK_DYNAMIC_CAST_POINTER(_Pointer) \
    if ((_Pointer) == NULL)                  \
        throw LOGICAL_ERROR_EXCEPTION("Unexpected type in dynamic cast");

}  // namespace GENICAM_NAMESPACE

#endif
