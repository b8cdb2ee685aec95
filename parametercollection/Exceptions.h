// The exceptions through which every failure leaves the library, one class per category of failure.
#ifndef PARAMETERCOLLECTION_EXCEPTIONS_H
#define PARAMETERCOLLECTION_EXCEPTIONS_H

#include "ParameterCollectionExport.h"
#include <QException>
#include <QString>

namespace Core {
namespace Exception {

// Carries one message. raise() and clone() produce plain BaseExceptions on purpose: an exception
// carried across threads arrives as a BaseException with the same message.
class PARAMETERCOLLECTION_EXPORT BaseException : public QException {
public:
    explicit BaseException(const QString& message);
    ~BaseException() override;
    void raise() const override;
    BaseException* clone() const override;

    // The message; what() keeps the standard library's generic text.
    const QString& getMessage() const;

private:
    QString m_Message;
};

#define PARAMETERCOLLECTION_DECLARE_EXCEPTION(Name, Base)        \
    class PARAMETERCOLLECTION_EXPORT Name : public Base {        \
    public:                                                      \
        explicit Name(const QString& message) : Base(message) {} \
    }

PARAMETERCOLLECTION_DECLARE_EXCEPTION(ArgumentException, BaseException);
PARAMETERCOLLECTION_DECLARE_EXCEPTION(InvalidArgumentException, ArgumentException);
PARAMETERCOLLECTION_DECLARE_EXCEPTION(ArgumentOutOfRangeException, BaseException);
PARAMETERCOLLECTION_DECLARE_EXCEPTION(InvalidOperationException, BaseException);
PARAMETERCOLLECTION_DECLARE_EXCEPTION(OperationNotSupportedException, BaseException);
PARAMETERCOLLECTION_DECLARE_EXCEPTION(ObjectDisposedException, BaseException);
PARAMETERCOLLECTION_DECLARE_EXCEPTION(AccessException, BaseException);
PARAMETERCOLLECTION_DECLARE_EXCEPTION(RuntimeException, BaseException);
PARAMETERCOLLECTION_DECLARE_EXCEPTION(TimeoutException, BaseException);
PARAMETERCOLLECTION_DECLARE_EXCEPTION(BadAllocException, BaseException);

#undef PARAMETERCOLLECTION_DECLARE_EXCEPTION

}  // namespace Exception
}  // namespace Core

#endif
