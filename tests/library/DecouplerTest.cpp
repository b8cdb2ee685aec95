// The moderated event decoupler: coalescing, one signal per burst, logging, removal and shutdown.
#include "LibraryFixture.h"
#include <QMutex>
#include <QStringList>
#include <QThread>
#include <atomic>

namespace R = SimCamera::Registers;

namespace {

// Collects Qt debug messages from any thread.
class CMessageLog {
public:
    CMessageLog() {
        s_Log = this;
        m_Previous = qInstallMessageHandler(&CMessageLog::handle);
    }
    ~CMessageLog() {
        qInstallMessageHandler(m_Previous);
        s_Log = nullptr;
    }
    QStringList messages() const {
        QMutexLocker lock(&m_Mutex);
        return m_Messages;
    }

private:
    static void handle(QtMsgType, const QMessageLogContext&, const QString& message) {
        if (!s_Log)
            return;
        QMutexLocker lock(&s_Log->m_Mutex);
        s_Log->m_Messages.append(message);
    }
    static CMessageLog* s_Log;
    QtMessageHandler m_Previous;
    mutable QMutex m_Mutex;
    QStringList m_Messages;
};

CMessageLog* CMessageLog::s_Log = nullptr;

}  // namespace

TEST_F(LibraryTest, ABurstOfWritesGivesOneDecoupledSignalWithTheFinalValue) {
    QSharedPointer<CParameter> width = parameter("Width");
    width->getParameterData();
    CDecoupledRecorder recorder(*width);
    QSharedPointer<CParameter> writer = parameter("Width");
    {
        // Holding the state lock keeps the decoupler from checking while the burst is written.
        CScopedObjectStateLock lock(&state());
        for (int value = 16; value <= 256; value += 16)
            writer->parseAndSetValue(QString::number(value));
    }
    ASSERT_TRUE(waitUntil([&] { return recorder.count() >= 1; }));
    QThread::msleep(100);  // three more periods: nothing else may arrive
    EXPECT_EQ(recorder.count(), 1);
    EXPECT_EQ(recorder.last()->valueText, "256");
}

// A GUI connects with the default (queued across threads) connection and gets the snapshot on its thread.
TEST_F(LibraryTest, DecoupledSnapshotsArriveThroughAQueuedConnection) {
    QSharedPointer<CParameter> width = parameter("Width");
    width->getParameterData();
    QObject receiver;
    QSharedPointer<const ParameterData> received;
    QThread* receivedOn = nullptr;
    QObject::connect(width.data(), &IParameter::parameterDataChangedDecoupled, &receiver,
                     [&](QSharedPointer<const ParameterData> data) {
                         received = data;
                         receivedOn = QThread::currentThread();
                     });
    parameter("Width")->parseAndSetValue("512");
    ASSERT_TRUE(waitUntil([&] { return !received.isNull(); }));
    EXPECT_EQ(received->valueText, "512");
    EXPECT_EQ(receivedOn, QThread::currentThread());
}

TEST_F(LibraryTest, CallbacksQueueOnlyParametersThatSomeoneListensTo) {
    QSharedPointer<CParameter> unheard = parameter("Height");
    unheard->parseAndSetValue("240");
    EXPECT_TRUE(decoupler()->pushParameterForDecoupledParameterDataChangedSignalling(unheard.data()));
    // It was not queued by the write's callback, or this push would have returned false.
    EXPECT_TRUE(decoupler()->removeParameterFromDecoupledParameterDataChangedSignalling(unheard.data()));
}

TEST_F(LibraryTest, ScheduledChecksEmitOnlyWhenForcedOrChanged) {
    QSharedPointer<CParameter> exposure = parameter("ExposureTime");
    exposure->getParameterData();
    exposure->checkParameterDataChanged();  // consume the pending change of the first read
    CDecoupledRecorder recorder(*exposure);
    exposure->scheduleParameterDataChangedCheck(false);
    QThread::msleep(100);
    EXPECT_EQ(recorder.count(), 0);
    exposure->scheduleParameterDataChangedCheck(true);
    ASSERT_TRUE(waitUntil([&] { return recorder.count() == 1; }));
    QThread::msleep(100);
    EXPECT_EQ(recorder.count(), 1);
    EXPECT_EQ(recorder.last()->valueText, "10000.0");
}

TEST_F(LibraryTest, QueueCoalescesAndRemovesEntries) {
    QSharedPointer<CParameter> width = parameter("Width");
    CScopedObjectStateLock lock(&state());  // the thread cannot drain while we hold the state
    EXPECT_TRUE(decoupler()->pushParameterForDecoupledParameterDataChangedSignalling(width.data()));
    EXPECT_FALSE(decoupler()->pushParameterForDecoupledParameterDataChangedSignalling(width.data()));
    EXPECT_FALSE(decoupler()->pushParameterForDecoupledParameterDataChangedSignalling(nullptr));
    EXPECT_TRUE(decoupler()->isRunning());
    EXPECT_TRUE(decoupler()->removeParameterFromDecoupledParameterDataChangedSignalling(width.data()));
    EXPECT_FALSE(decoupler()->removeParameterFromDecoupledParameterDataChangedSignalling(width.data()));
    EXPECT_FALSE(decoupler()->removeParameterFromDecoupledParameterDataChangedSignalling(nullptr));
}

TEST_F(LibraryTest, AFailingCheckIsLoggedAndTheThreadGoesOn) {
    CMessageLog log;
    QSharedPointer<CParameter> first = parameter("Width");
    QSharedPointer<CParameter> second = parameter("Height");
    CDecoupledRecorder recorder(*second);
    state().setState(ObjectState_Closed);
    first->scheduleParameterDataChangedCheck(true);
    ASSERT_TRUE(waitUntil([&] { return log.messages().size() >= 2; }));
    EXPECT_EQ(log.messages().at(0).toStdString(), "Event could not be forwarded:");
    EXPECT_EQ(log.messages().at(1).toStdString(), ": std::exception");
    state().setState(ObjectState_Open);
    second->scheduleParameterDataChangedCheck(true);
    ASSERT_TRUE(waitUntil([&] { return recorder.count() == 1; }));
    EXPECT_EQ(recorder.last()->valueText, "480");
}

TEST_F(LibraryTest, ShutdownFinishesTheCurrentDrainFirst) {
    QVector<QSharedPointer<CParameter>> parameters;
    std::atomic<int> emitted{0};
    std::atomic<bool> firstCheckStarted{false};
    const char* names[] = {"Width",        "Height", "OffsetX",     "OffsetY",
                           "ExposureTime", "Gain",   "PixelFormat", "Gamma"};
    for (const char* name : names) {
        parameters.append(parameter(name));
        QObject::connect(
            parameters.last().data(), &IParameter::parameterDataChangedDecoupled, parameters.last().data(),
            [&] {
                if (!firstCheckStarted.exchange(true))
                    QThread::msleep(150);
                ++emitted;
            },
            Qt::DirectConnection);
    }
    {
        CScopedObjectStateLock lock(&state());
        for (auto& p : parameters)
            p->scheduleParameterDataChangedCheck(true);
    }
    ASSERT_TRUE(waitUntil([&] { return firstCheckStarted.load(); }));
    decoupler()->shutdown();  // signalled while the first check sleeps
    EXPECT_TRUE(decoupler()->isFinished());
    EXPECT_EQ(emitted, 8);
    decoupler()->shutdown();  // a second shutdown is harmless
    QSharedPointer<CModeratedParameterEventDecouplerThread> neverStarted(
        new CModeratedParameterEventDecouplerThread(sharedState()));
    neverStarted->shutdown();
    EXPECT_FALSE(neverStarted->isRunning());
}

TEST_F(LibraryTest, AParameterDestroyedWhileOthersAreCheckedIsNeverCheckedAfterwards) {
    // Declared before the parameters, so that a check still queued when the test ends finds it alive.
    std::atomic<int> checks{0};
    QVector<QSharedPointer<CParameter>> survivors;
    for (const char* name : {"Width", "Height", "ExposureTime", "Gain"})
        survivors.append(parameter(name));
    for (auto& p : survivors) {
        QObject::connect(
            p.data(), &IParameter::parameterDataChangedDecoupled, p.data(), [&] { ++checks; },
            Qt::DirectConnection);
    }
    std::atomic<bool> stop{false};
    std::thread producer([&] {
        while (!stop) {
            for (auto& p : survivors)
                p->scheduleParameterDataChangedCheck(true);
            QThread::msleep(1);
        }
    });
    // Parameters created, queued and destroyed on this thread while the decoupler works.
    for (int round = 0; round < 200; ++round) {
        QSharedPointer<CParameter> doomed = parameter(round % 2 ? "OffsetX" : "PixelFormat");
        QObject::connect(
            doomed.data(), &IParameter::parameterDataChangedDecoupled, doomed.data(), [] {},
            Qt::DirectConnection);
        doomed->scheduleParameterDataChangedCheck(true);
        if (round % 3 == 0)
            QThread::usleep(200);
    }
    stop = true;
    producer.join();
    EXPECT_TRUE(waitUntil([&] { return checks > 0; }));
}

namespace {

// A parameter whose refresh fails with something that is no std::exception, as a GenICam error is.
class CRefreshThrowingParameter : public CParameter {
public:
    using CParameter::CParameter;
    bool updateCachedParameterData() override { throw 42; }
};

}  // namespace

TEST_F(LibraryTest, DecouplerLogsAnyExceptionAndRefusesNull) {
    CMessageLog log;
    QSharedPointer<CRefreshThrowingParameter> failing(
        new CRefreshThrowingParameter("Width", "@CameraDevice", sharedState(), decoupler()));
    ASSERT_TRUE(failing->attach(map()));
    failing->scheduleParameterDataChangedCheck(true);
    ASSERT_TRUE(waitUntil([&] { return log.messages().size() >= 2; }));
    EXPECT_EQ(log.messages().at(0).toStdString(), "Event could not be forwarded");
    EXPECT_EQ(log.messages().at(1).toStdString(), ": Unspecified exception occurred.");
    failing->attach(nullptr);

    // Null starts a decoupler that was never started, but queues nothing and logs nothing.
    QSharedPointer<CModeratedParameterEventDecouplerThread> fresh(
        new CModeratedParameterEventDecouplerThread(sharedState()));
    EXPECT_FALSE(fresh->isRunning());
    const int logged = log.messages().size();
    EXPECT_FALSE(fresh->pushParameterForDecoupledParameterDataChangedSignalling(nullptr));
    EXPECT_TRUE(fresh->isRunning());
    EXPECT_FALSE(fresh->removeParameterFromDecoupledParameterDataChangedSignalling(nullptr));
    fresh->shutdown();
    EXPECT_EQ(log.messages().size(), logged);
}
