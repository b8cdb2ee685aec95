// Turns every GenICam exception that escapes a GenApi call into the matching library exception.
#ifndef PARAMETERCOLLECTION_INTERNAL_GENICAMEXCEPTIONTRANSLATION_H
#define PARAMETERCOLLECTION_INTERNAL_GENICAMEXCEPTIONTRANSLATION_H

#include <GenApi/GenApi.h>

namespace ParameterCollection {
namespace Internal {

// Called from a catch handler of GenICam::GenericException: throws the library exception that matches
// the caught class (most specific first), carrying GenICam's description text.
[[noreturn]] void rethrowAsLibraryException();

// Runs a call; GenICam exceptions leave translated, every other exception unchanged. Objects the call
// creates (such as a state lock) are released before the translated exception is thrown.
template <typename Call>
auto translateGenICamExceptions(Call&& call) -> decltype(call()) {
    try {
        return call();
    } catch (const GENICAM_NAMESPACE::GenericException&) {
        rethrowAsLibraryException();
    }
}

}  // namespace Internal
}  // namespace ParameterCollection

#endif
