// The translation table from GenICam's exception classes to the library's.
#include "GenICamExceptionTranslation.h"
#include "../Exceptions.h"
#include <QString>

namespace ParameterCollection {
namespace Internal {

void rethrowAsLibraryException() {
    using namespace Core::Exception;
    try {
        throw;
    } catch (const GENICAM_NAMESPACE::InvalidArgumentException& e) {
        throw ArgumentException(QString::fromLocal8Bit(e.GetDescription()));
    } catch (const GENICAM_NAMESPACE::OutOfRangeException& e) {
        throw ArgumentOutOfRangeException(QString::fromLocal8Bit(e.GetDescription()));
    } catch (const GENICAM_NAMESPACE::AccessException& e) {
        throw InvalidOperationException(QString::fromLocal8Bit(e.GetDescription()));
    } catch (const GENICAM_NAMESPACE::TimeoutException& e) {
        throw TimeoutException(QString::fromLocal8Bit(e.GetDescription()));
    } catch (const GENICAM_NAMESPACE::LogicalErrorException& e) {
        throw InvalidOperationException(QString::fromLocal8Bit(e.GetDescription()));
    } catch (const GENICAM_NAMESPACE::BadAllocException& e) {
        throw BadAllocException(QString::fromLocal8Bit(e.GetDescription()));
    } catch (const GENICAM_NAMESPACE::RuntimeException& e) {
        throw RuntimeException(QString::fromLocal8Bit(e.GetDescription()));
    } catch (const GENICAM_NAMESPACE::GenericException& e) {
        throw BaseException(QString::fromLocal8Bit(e.GetDescription()));
    }
}

}  // namespace Internal
}  // namespace ParameterCollection
