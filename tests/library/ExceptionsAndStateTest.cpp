// The exception tree, the GenICam translation, and the object state with its scoped lock.
#include "LibraryFixture.h"
#include <parametercollection/ScopedObjectStateLock.h>
#include <parametercollection/internal/GenICamExceptionTranslation.h>
#include <QtConcurrent/QtConcurrent>
#include <atomic>
#include <thread>

using namespace Core::Exception;

namespace {

// True when another thread can take the state's mutex (a leaked lock makes the test time out).
bool lockableFromAnotherThread(CObjectState& state) {
    std::atomic<bool> locked{false};
    std::thread([&] {
        state.lock();
        locked = true;
        state.unlock();
    }).join();
    return locked;
}

template <typename GenICamException>
void throwGenICam(const char* text) {
    throw GenICamException(text, __FILE__, __LINE__);
}

}  // namespace

TEST(Exceptions, CategoriesMessagesAndSlicing) {
    // Catch by category; the message is kept, what() is not the message.
    try {
        throw InvalidArgumentException("bad argument");
    } catch (const ArgumentException& e) {
        EXPECT_EQ(e.getMessage(), "bad argument");
        EXPECT_NE(QString::fromLatin1(e.what()), "bad argument");
    }
    const ArgumentOutOfRangeException outOfRange("too large");
    // clone() and raise() give plain BaseExceptions with the same message.
    QScopedPointer<BaseException> clone(outOfRange.clone());
    EXPECT_EQ(clone->getMessage(), "too large");
    EXPECT_EQ(dynamic_cast<ArgumentOutOfRangeException*>(clone.data()), nullptr);
    bool caughtAsSubclass = false;
    try {
        outOfRange.raise();
    } catch (const ArgumentOutOfRangeException&) {
        caughtAsSubclass = true;
    } catch (const BaseException& e) {
        EXPECT_EQ(e.getMessage(), "too large");
    }
    EXPECT_FALSE(caughtAsSubclass);
    // Carried across threads by Qt's concurrency machinery, an exception arrives sliced.
    QFuture<void> future = QtConcurrent::run([] { throw TimeoutException("device silent"); });
    try {
        future.waitForFinished();
        ADD_FAILURE() << "no exception";
    } catch (const TimeoutException&) {
        ADD_FAILURE() << "not sliced";
    } catch (const BaseException& e) {
        EXPECT_EQ(e.getMessage(), "device silent");
    }
}

TEST(Exceptions, GenICamExceptionsAreTranslatedByTheTable) {
    using ParameterCollection::Internal::translateGenICamExceptions;
    EXPECT_THROW(translateGenICamExceptions([] { throwGenICam<GenICam::InvalidArgumentException>("x"); }),
                 ArgumentException);
    EXPECT_THROW(translateGenICamExceptions([] { throwGenICam<GenICam::OutOfRangeException>("x"); }),
                 ArgumentOutOfRangeException);
    EXPECT_THROW(translateGenICamExceptions([] { throwGenICam<GenICam::AccessException>("x"); }),
                 InvalidOperationException);
    EXPECT_THROW(translateGenICamExceptions([] { throwGenICam<GenICam::TimeoutException>("x"); }),
                 TimeoutException);
    EXPECT_THROW(translateGenICamExceptions([] { throwGenICam<GenICam::LogicalErrorException>("x"); }),
                 InvalidOperationException);
    EXPECT_THROW(translateGenICamExceptions([] { throwGenICam<GenICam::BadAllocException>("x"); }),
                 BadAllocException);
    EXPECT_THROW(translateGenICamExceptions([] { throwGenICam<GenICam::RuntimeException>("x"); }),
                 RuntimeException);
    // Classes without an entry become BaseException; the description is the message.
    const QString text = messageOf<BaseException>([] {
        translateGenICamExceptions([] { throwGenICam<GenICam::PropertyException>("no such property"); });
    });
    EXPECT_EQ(text, "no such property");
    try {
        translateGenICamExceptions([] { throwGenICam<GenICam::PropertyException>("x"); });
    } catch (const ArgumentException&) {
        ADD_FAILURE() << "a property failure is no argument failure";
    } catch (const BaseException&) {
    }
    // Exceptions that are not GenICam's pass unchanged; results pass through.
    EXPECT_THROW(translateGenICamExceptions([] { throw std::logic_error("mine"); }), std::logic_error);
    EXPECT_EQ(translateGenICamExceptions([] { return 42; }), 42);
}

TEST(ObjectState, FieldsAndTheScopedLock) {
    QObject owner;
    CObjectState state(&owner);
    EXPECT_EQ(state.getState(), ObjectState_Closed);
    EXPECT_EQ(state.getEntryCount(), 0);
    EXPECT_FALSE(state.isInUse());
    EXPECT_TRUE(state.getName().isEmpty());
    EXPECT_EQ(state.getOwner(), &owner);
    EXPECT_EQ(state.parent(), nullptr);  // the owner is not the Qt parent
    state.setState(ObjectState_Open);
    state.setName("camera 1");
    state.setIsInUse(true);
    EXPECT_EQ(state.getState(), ObjectState_Open);
    EXPECT_EQ(state.getName(), "camera 1");
    EXPECT_TRUE(state.isInUse());

    {
        CScopedObjectStateLock outer(&state);
        CScopedObjectStateLock inner(&state);  // recursive: no deadlock
        EXPECT_EQ(state.getEntryCount(), 2);
    }
    EXPECT_EQ(state.getEntryCount(), 0);
    EXPECT_TRUE(lockableFromAnotherThread(state));
    { CScopedObjectStateLock nothing(nullptr); }
    EXPECT_EQ(state.getEntryCount(), 0);

    // The count is non-zero while a guard is alive on another thread.
    std::atomic<bool> inside{false};
    std::atomic<bool> leave{false};
    std::thread holder([&] {
        CScopedObjectStateLock lock(&state);
        inside = true;
        while (!leave)
            std::this_thread::yield();
    });
    while (!inside)
        std::this_thread::yield();
    EXPECT_EQ(state.getEntryCount(), 1);
    leave = true;
    holder.join();
    EXPECT_EQ(state.getEntryCount(), 0);
}

TEST_F(LibraryTest, AGenApiRangeErrorReachesTheCallerTranslatedAndTheLockIsFree) {
    QSharedPointer<CParameter> width = parameter("Width");
    const QString text = messageOf<ArgumentOutOfRangeException>([&] { width->parseAndSetValue("5000"); });
    EXPECT_EQ(text, "Value = 5000 must be equal or smaller than Max = 2048.");
    EXPECT_EQ(state().getEntryCount(), 0);
    EXPECT_TRUE(lockableFromAnotherThread(state()));
    EXPECT_EQ(camera().peekRegister(SimCamera::Registers::Width), 640u);
}
