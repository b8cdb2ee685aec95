// Maps engine checks, Aravis errors and port failures onto GenICam's exception classes.
#include "NodeErrors.h"
#include <arv.h>
#include <cstdarg>
#include <cstdlib>
#include <new>
#include <stdexcept>
#include <cstdio>

namespace GenApiEngine {
namespace {

template <typename E>
[[noreturn]] void raiseAs(const char* typeName, const std::string& node, const char* method,
                          const std::string& problem) {
    const std::string entryPoint = node + "." + method + "()";
    // GenApi's description is the bare text; the node and the call go into what() only.
    throw E(problem.c_str(), __FILE__, __LINE__, entryPoint.c_str(), node.c_str(), typeName);
}

EError kindOfGcError(int code) {
    switch (code) {
        case ARV_GC_ERROR_OUT_OF_RANGE:
            return EError::OutOfRange;
        case ARV_GC_ERROR_ENUM_ENTRY_NOT_FOUND:
        case ARV_GC_ERROR_INVALID_LENGTH:
        case ARV_GC_ERROR_SET_FROM_STRING_UNDEFINED:
            return EError::InvalidArgument;
        case ARV_GC_ERROR_READ_ONLY:
        case ARV_GC_ERROR_NO_DEVICE_SET:
        case ARV_GC_ERROR_EMPTY_ENUMERATION:
            return EError::Access;
        case ARV_GC_ERROR_PROPERTY_NOT_DEFINED:
        case ARV_GC_ERROR_PVALUE_NOT_DEFINED:
        case ARV_GC_ERROR_INVALID_PVALUE:
        case ARV_GC_ERROR_NODE_NOT_FOUND:
            return EError::Property;
        default:
            return EError::Runtime;
    }
}

EError kindOfDeviceError(int code) {
    switch (code) {
        case ARV_DEVICE_ERROR_TIMEOUT:
            return EError::Timeout;
        case ARV_DEVICE_ERROR_NOT_CONNECTED:
        case ARV_DEVICE_ERROR_NOT_CONTROLLER:
        case ARV_DEVICE_ERROR_PROTOCOL_ERROR_WRITE_PROTECT:
        case ARV_DEVICE_ERROR_PROTOCOL_ERROR_ACCESS_DENIED:
            return EError::Access;
        case ARV_DEVICE_ERROR_PROTOCOL_ERROR_INVALID_PARAMETER:
        case ARV_DEVICE_ERROR_INVALID_PARAMETER:
            return EError::InvalidArgument;
        default:
            return EError::Runtime;
    }
}

// The kind of a GenICam exception, most specific class first.
EError kindOf(const GENICAM_NAMESPACE::GenericException& e) {
    using namespace GENICAM_NAMESPACE;
    if (dynamic_cast<const AccessException*>(&e))
        return EError::Access;
    if (dynamic_cast<const OutOfRangeException*>(&e))
        return EError::OutOfRange;
    if (dynamic_cast<const InvalidArgumentException*>(&e))
        return EError::InvalidArgument;
    if (dynamic_cast<const LogicalErrorException*>(&e))
        return EError::LogicalError;
    if (dynamic_cast<const TimeoutException*>(&e))
        return EError::Timeout;
    if (dynamic_cast<const PropertyException*>(&e))
        return EError::Property;
    if (dynamic_cast<const BadAllocException*>(&e))
        return EError::BadAlloc;
    return EError::Runtime;
}

}  // namespace

void requireRegisterBuffer(int64_t length) {
    // GenApi reads a string register into a std::string of the register's length.
    if (length > 0 && static_cast<uint64_t>(length) > std::string().max_size())
        throw std::length_error("basic_string::_S_create");
    // Small buffers are left to the allocator; a large one is tried first, and given back at once.
    constexpr int64_t probeFrom = 64 << 20;
    if (length > probeFrom) {
        void* trial = std::malloc(static_cast<size_t>(length));
        if (!trial)
            throw std::bad_alloc();
        std::free(trial);
    }
}

std::string formatText(const char* format, ...) {
    char buffer[1024];
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(buffer, sizeof(buffer), format, arguments);
    va_end(arguments);
    return buffer;
}

void raiseNodeError(EError kind, const std::string& node, const char* method, const std::string& problem) {
    using namespace GENICAM_NAMESPACE;
    switch (kind) {
        case EError::Access:
            raiseAs<AccessException>("AccessException", node, method, problem);
        case EError::OutOfRange:
            raiseAs<OutOfRangeException>("OutOfRangeException", node, method, problem);
        case EError::InvalidArgument:
            raiseAs<InvalidArgumentException>("InvalidArgumentException", node, method, problem);
        case EError::LogicalError:
            raiseAs<LogicalErrorException>("LogicalErrorException", node, method, problem);
        case EError::Timeout:
            raiseAs<TimeoutException>("TimeoutException", node, method, problem);
        case EError::Property:
            raiseAs<PropertyException>("PropertyException", node, method, problem);
        case EError::BadAlloc:
            raiseAs<BadAllocException>("BadAllocException", node, method, problem);
        case EError::Runtime:
            break;
    }
    raiseAs<RuntimeException>("RuntimeException", node, method, problem);
}

void raiseFromGError(GError* error, const std::string& node, const char* method) {
    EError kind = EError::Runtime;
    std::string problem = "unknown failure";
    if (error) {
        problem = error->message ? error->message : problem;
        if (error->domain == ARV_GC_ERROR)
            kind = kindOfGcError(error->code);
        if (error->domain == ARV_DEVICE_ERROR)
            kind = kindOfDeviceError(error->code);
        g_error_free(error);
    }
    raiseNodeError(kind, node, method, problem);
}

void rethrowPortError(const std::exception_ptr& error, const std::string& node, const char* method) {
    try {
        std::rethrow_exception(error);
    } catch (const GENICAM_NAMESPACE::GenericException& e) {
        raiseNodeError(kindOf(e), node, method, e.GetDescription());
    } catch (const std::exception& e) {
        raiseNodeError(EError::Runtime, node, method, e.what());
    }
    raiseNodeError(EError::Runtime, node, method, "the port failed");
}

}  // namespace GenApiEngine
