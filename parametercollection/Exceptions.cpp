// BaseException: one shared message; re-raising and cloning deliberately slice to the base class.
#include "Exceptions.h"

namespace Core {
namespace Exception {

BaseException::BaseException(const QString& message) : m_Message(message) {}

BaseException::~BaseException() {}

void BaseException::raise() const {
    throw BaseException(m_Message);
}

BaseException* BaseException::clone() const {
    return new BaseException(m_Message);
}

const QString& BaseException::getMessage() const {
    return m_Message;
}

}  // namespace Exception
}  // namespace Core
