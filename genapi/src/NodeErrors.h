// Raising GenICam exceptions that name the node and the call, from engine checks and from Aravis errors.
#ifndef GENAPI_ENGINE_NODEERRORS_H
#define GENAPI_ENGINE_NODEERRORS_H

#include <Base/GCException.h>
#include <cstdint>
#include <exception>
#include <string>

typedef struct _GError GError;

namespace GenApiEngine {

// The kinds of failure the engine reports, each raised as the GenICam exception GenApi uses for it.
enum class EError { Access, OutOfRange, InvalidArgument, LogicalError, Runtime, Timeout, Property, BadAlloc };

// Throws the exception of the given kind; the description is "Node '<node>' : <problem>".
[[noreturn]] void raiseNodeError(EError kind, const std::string& node, const char* method,
                                 const std::string& problem);

// Throws the GenICam exception that matches an Aravis error raised while serving a node.
[[noreturn]] void raiseFromGError(GError* error, const std::string& node, const char* method);

// Rethrows an exception a user port raised, with the node named in its description and its type kept.
[[noreturn]] void rethrowPortError(const std::exception_ptr& error, const std::string& node,
                                   const char* method);

// Checks that a buffer for a register of the given length can exist before anything allocates it: a length
// beyond what a string can hold here fails with std::length_error as GenApi's string buffer does, and one
// that cannot be allocated with std::bad_alloc, where an allocation inside Aravis would abort the process
// (on 32-bit x86, lengths read from a garbled length register easily pass both limits).
void requireRegisterBuffer(int64_t length);

// printf-style formatting into a std::string.
std::string formatText(const char* format, ...) __attribute__((format(printf, 1, 2)));

}  // namespace GenApiEngine

#endif
