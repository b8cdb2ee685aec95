// Integer and float parameters: the values that reach the device, announcements, corrections, percent
// of range, limits, try variants and snapshots.
#include "LibraryFixture.h"
#include <GenApi/GenApi.h>
#include <QSignalSpy>
#include <future>
#include <thread>
#include <parametercollection/internal/FloatParameter.h>
#include <parametercollection/internal/IntegerParameter.h>

using namespace Core::Exception;
namespace R = SimCamera::Registers;

class NumericParametersTest : public LibraryTest {
protected:
    // The value as the engine reads it, not through the parameter.
    int64_t deviceInteger(const char* name) { return GenApi::CIntegerPtr(node(name))->GetValue(false, true); }
    double deviceFloat(const char* name) { return GenApi::CFloatPtr(node(name))->GetValue(false, true); }
    void imposeIntegerLimits(const char* name, int64_t minimum, int64_t maximum) {
        GenApi::CIntegerPtr(node(name))->ImposeMin(minimum);
        GenApi::CIntegerPtr(node(name))->ImposeMax(maximum);
    }
    void imposeFloatLimits(const char* name, double minimum, double maximum) {
        GenApi::CFloatPtr(node(name))->ImposeMin(minimum);
        GenApi::CFloatPtr(node(name))->ImposeMax(maximum);
    }
};

TEST_F(NumericParametersTest, IntegerReadsWritesAndAnnouncements) {
    auto width = typed<CIntegerParameter>("Width");
    EXPECT_EQ(width->getParameterType(), ParameterType_Integer);
    EXPECT_EQ(width->getValue(), 640);
    EXPECT_EQ(width->getMinimum(), 16);
    EXPECT_EQ(width->getMaximum(), 2048);
    EXPECT_EQ(width->getIncrement(), 16);
    QSignalSpy announced(width.data(), &IParameter::parameterValueAboutToBeSet);
    width->setValue(1024, true);
    EXPECT_EQ(deviceInteger("Width"), 1024);
    ASSERT_EQ(announced.count(), 1);
    EXPECT_EQ(announced.at(0).at(0).toString(), "1024");
    // The standard write translates GenApi's refusal.
    EXPECT_EQ(messageOf<ArgumentOutOfRangeException>([&] { width->setValue(4096, true); }),
              "Value = 4096 must be equal or smaller than Max = 2048.");

    EXPECT_TRUE(width->trySetValue(512));
    EXPECT_EQ(deviceInteger("Width"), 512);
    auto readOnly = typed<CIntegerParameter>("TestReadOnlyInteger");
    EXPECT_FALSE(readOnly->trySetValue(5));
    EXPECT_FALSE(readOnly->trySetToMaximum());
    EXPECT_EQ(messageOf<InvalidOperationException>([&] { readOnly->setValue(5, true); }),
              "Node not writable.");
    auto writeOnly = typed<CIntegerParameter>("TestWriteOnlyInteger");
    EXPECT_EQ(writeOnly->getValueOrDefault(7), 7);
    EXPECT_EQ(typed<CIntegerParameter>("NoSuchFeature")->getValueOrDefault(7), 7);
    EXPECT_EQ(width->getValueOrDefault(7), 512);
    EXPECT_EQ(messageOf<InvalidOperationException>([&] { writeOnly->getValue(); }), "Node not readable.");
    EXPECT_FALSE(typed<CIntegerParameter>("NoSuchFeature")->trySetValue(1));
    // A try write that GenApi refuses still throws, untranslated.
    EXPECT_THROW(width->trySetValue(100), GenICam::OutOfRangeException);
}

TEST_F(NumericParametersTest, IntegerGridCorrection) {
    auto step = typed<CIntegerParameter>("TestIntegerStep10");  // 0 to 100 in steps of 10
    step->setValue(47, IntegerValueCorrection_Up);
    EXPECT_EQ(deviceInteger("TestIntegerStep10"), 50);
    step->setValue(47, IntegerValueCorrection_Down);
    EXPECT_EQ(deviceInteger("TestIntegerStep10"), 40);
    step->setValue(47, IntegerValueCorrection_Nearest);
    EXPECT_EQ(deviceInteger("TestIntegerStep10"), 50);
    step->setValue(45, IntegerValueCorrection_Nearest);
    EXPECT_EQ(deviceInteger("TestIntegerStep10"), 50);  // the tie goes up
    step->setValue(44, IntegerValueCorrection_Nearest);
    EXPECT_EQ(deviceInteger("TestIntegerStep10"), 40);
    step->setValue(47, static_cast<EIntegerValueCorrection>(7));  // unknown corrections go down
    EXPECT_EQ(deviceInteger("TestIntegerStep10"), 40);
    step->setValue(-5, IntegerValueCorrection_Down);
    EXPECT_EQ(deviceInteger("TestIntegerStep10"), 0);
    step->setValue(500, IntegerValueCorrection_Up);
    EXPECT_EQ(deviceInteger("TestIntegerStep10"), 100);

    // The corrected write is announced with the target.
    QSignalSpy announced(step.data(), &IParameter::parameterValueAboutToBeSet);
    EXPECT_TRUE(step->trySetValue(63, IntegerValueCorrection_Nearest));
    EXPECT_EQ(announced.last().at(0).toString(), "60");
    EXPECT_EQ(deviceInteger("TestIntegerStep10"), 60);

    // Without correction the value goes to GenApi as it is, announced first.
    EXPECT_THROW(step->setValue(47, IntegerValueCorrection_None), GenICam::OutOfRangeException);
    EXPECT_EQ(announced.last().at(0).toString(), "47");

    // Near the top the grid value above the maximum is tried and GenApi refuses it, untranslated.
    imposeIntegerLimits("TestIntegerStep10", 0, 95);
    EXPECT_THROW(step->setValue(93, IntegerValueCorrection_Up), GenICam::OutOfRangeException);
    EXPECT_EQ(deviceInteger("TestIntegerStep10"), 60);
    EXPECT_FALSE(typed<CIntegerParameter>("TestWriteOnlyInteger")->trySetValue(3, IntegerValueCorrection_Up));
}

TEST_F(NumericParametersTest, IntegerPercentOfRangeAndLimits) {
    auto gain = typed<CIntegerParameter>("GainRaw");
    imposeIntegerLimits("GainRaw", 0, 200);
    gain->setValue(50, true);
    EXPECT_DOUBLE_EQ(gain->getValuePercentOfRange(), 25.0);
    gain->setValue(0, true);
    EXPECT_DOUBLE_EQ(gain->getValuePercentOfRange(), 0.0);
    gain->setValue(200, true);
    EXPECT_DOUBLE_EQ(gain->getValuePercentOfRange(), 100.0);
    imposeIntegerLimits("GainRaw", 0, 255);
    QSignalSpy announced(gain.data(), &IParameter::parameterValueAboutToBeSet);
    gain->setValuePercentOfRange(50);
    EXPECT_EQ(deviceInteger("GainRaw"), 128);  // 127.5 rounds away from zero
    gain->setValuePercentOfRange(-3);
    EXPECT_EQ(deviceInteger("GainRaw"), 0);
    gain->setValuePercentOfRange(250);
    EXPECT_EQ(deviceInteger("GainRaw"), 255);
    EXPECT_EQ(announced.count(), 0);  // percent writes are not announced
    imposeIntegerLimits("GainRaw", 7, 7);
    EXPECT_DOUBLE_EQ(gain->getValuePercentOfRange(), 100.0);

    // Percent writes land on the grid.
    auto step = typed<CIntegerParameter>("TestIntegerStep10");
    EXPECT_TRUE(step->trySetValuePercentOfRange(33));
    EXPECT_EQ(deviceInteger("TestIntegerStep10"), 30);
    EXPECT_FALSE(typed<CIntegerParameter>("TestReadOnlyInteger")->trySetValuePercentOfRange(10));
    EXPECT_EQ(messageOf<AccessException>([&] { typed<CIntegerParameter>("Root")->getValuePercentOfRange(); }),
              "Feature not present (reference not valid)");

    step->setToMaximum();
    EXPECT_EQ(deviceInteger("TestIntegerStep10"), 100);
    EXPECT_EQ(announced.count(), 0);
    QSignalSpy stepAnnounced(step.data(), &IParameter::parameterValueAboutToBeSet);
    EXPECT_TRUE(step->trySetToMinimum());
    EXPECT_EQ(stepAnnounced.last().at(0).toString(), "0");
    EXPECT_EQ(deviceInteger("TestIntegerStep10"), 0);

    // Disposed: the standard read refuses, the limit write still goes through.
    state().setState(ObjectState_Disposed);
    EXPECT_THROW(step->getValue(), ObjectDisposedException);
    step->setToMaximum();
    EXPECT_EQ(deviceInteger("TestIntegerStep10"), 100);
}

TEST_F(NumericParametersTest, IntegerSnapshot) {
    auto hex = typed<CIntegerParameter>("TestHexInteger");
    auto data = hex->getParameterData().dynamicCast<const IntegerParameterData>();
    ASSERT_TRUE(data);
    EXPECT_EQ(data->parameterType, ParameterType_Integer);
    EXPECT_EQ(data->value, 0xCAFE);
    EXPECT_EQ(data->minimum, 0);
    EXPECT_EQ(data->maximum, 0xFFFFFFFFLL);
    EXPECT_EQ(data->increment, 1);
    EXPECT_EQ(data->representation, "HexNumber");
    EXPECT_EQ(data->valueText, "0xcafe");
    // A limit that changes elsewhere changes the snapshot.
    auto width = typed<CIntegerParameter>("Width");
    width->getParameterData();
    width->checkParameterDataChanged();
    typed<CIntegerParameter>("OffsetX")->setValue(512, true);
    CDecoupledRecorder recorder(*width);
    EXPECT_TRUE(width->checkParameterDataChanged());
    auto changed = recorder.last().dynamicCast<const IntegerParameterData>();
    ASSERT_TRUE(changed);
    EXPECT_EQ(changed->maximum, 2048 - 512);
    EXPECT_EQ(changed->value, 640);
}

TEST_F(NumericParametersTest, FloatWritesClippingAndCorrections) {
    auto exposure = typed<CFloatParameter>("ExposureTime");
    EXPECT_EQ(exposure->getParameterType(), ParameterType_Float);
    QSignalSpy announced(exposure.data(), &IParameter::parameterValueAboutToBeSet);
    exposure->setValue(2500.5);
    EXPECT_DOUBLE_EQ(deviceFloat("ExposureTime"), 2500.5);
    EXPECT_EQ(announced.last().at(0).toString(), "2500.5");
    exposure->setValue(1.5e6, FloatValueCorrection_ClipToRange);
    EXPECT_DOUBLE_EQ(deviceFloat("ExposureTime"), 1e6);
    EXPECT_EQ(announced.last().at(0).toString(), "1e+06");
    const int announcements = announced.count();
    exposure->setValue(1.5e6, static_cast<EFloatValueCorrection>(1));
    exposure->setValue(5.0, static_cast<EFloatValueCorrection>(2));
    EXPECT_TRUE(exposure->trySetValue(5.0, static_cast<EFloatValueCorrection>(1)));
    EXPECT_DOUBLE_EQ(deviceFloat("ExposureTime"), 1e6);
    EXPECT_EQ(announced.count(), announcements);
    EXPECT_TRUE(exposure->trySetValue(3.0, FloatValueCorrection_ClipToRange));
    EXPECT_DOUBLE_EQ(deviceFloat("ExposureTime"), 10.0);
    // The clipped try write is the guarded one: a read-only node raises instead of answering false.
    auto readOnly = typed<CFloatParameter>("ExposureTimeMs");
    EXPECT_EQ(messageOf<InvalidOperationException>(
                  [&] { readOnly->trySetValue(1.0, FloatValueCorrection_ClipToRange); }),
              "Node not writable.");
    EXPECT_FALSE(readOnly->trySetValue(1.0));
    EXPECT_THROW(exposure->setValue(5.0), ArgumentOutOfRangeException);
    EXPECT_THROW(exposure->trySetValue(5.0), GenICam::OutOfRangeException);
    EXPECT_DOUBLE_EQ(exposure->getValueOrDefault(-1.0), 10.0);
    EXPECT_DOUBLE_EQ(typed<CFloatParameter>("NoSuchFeature")->getValueOrDefault(-1.0), -1.0);
}

TEST_F(NumericParametersTest, FloatPercentOfRangeLimitsAndIncrement) {
    auto black = typed<CFloatParameter>("BlackLevel");
    imposeFloatLimits("BlackLevel", 0.0, 10.0);
    black->setValue(2.5);
    EXPECT_DOUBLE_EQ(black->getValuePercentOfRange(), 25.0);
    black->setValue(0.0);
    EXPECT_DOUBLE_EQ(black->getValuePercentOfRange(), 0.0);
    QSignalSpy announced(black.data(), &IParameter::parameterValueAboutToBeSet);
    black->setValuePercentOfRange(-3);
    EXPECT_DOUBLE_EQ(deviceFloat("BlackLevel"), 0.0);
    black->setValuePercentOfRange(37.5);
    EXPECT_DOUBLE_EQ(deviceFloat("BlackLevel"), 3.75);  // no rounding, no grid
    EXPECT_EQ(announced.count(), 0);
    black->setToMaximum();
    EXPECT_DOUBLE_EQ(deviceFloat("BlackLevel"), 10.0);
    EXPECT_EQ(announced.last().at(0).toString(), "10");
    imposeFloatLimits("BlackLevel", 4.0, 4.0);
    EXPECT_DOUBLE_EQ(black->getValuePercentOfRange(), 100.0);

    // Halved operands keep the extreme range finite: the middle of ±1e308 is 0.
    auto huge = typed<CFloatParameter>("TestFloatHugeRange");
    huge->setValuePercentOfRange(50);
    EXPECT_DOUBLE_EQ(deviceFloat("TestFloatHugeRange"), 0.0);
    EXPECT_DOUBLE_EQ(huge->getValuePercentOfRange(), 50.0);
    huge->setValue(5e307);
    EXPECT_DOUBLE_EQ(huge->getValuePercentOfRange(), 75.0);

    auto rate = typed<CFloatParameter>("AcquisitionFrameRate");
    EXPECT_TRUE(rate->hasIncrement());
    EXPECT_DOUBLE_EQ(rate->getIncrement(), 0.5);
    EXPECT_FALSE(typed<CFloatParameter>("ExposureTime")->hasIncrement());
    EXPECT_TRUE(rate->trySetToMinimum());
    EXPECT_DOUBLE_EQ(deviceFloat("AcquisitionFrameRate"), 1.0);
    EXPECT_FALSE(typed<CFloatParameter>("ExposureTimeMs")->trySetToMaximum());
}

TEST_F(NumericParametersTest, FloatSnapshot) {
    auto exposure = typed<CFloatParameter>("ExposureTime");
    auto data = exposure->getParameterData().dynamicCast<const FloatParameterData>();
    ASSERT_TRUE(data);
    EXPECT_EQ(data->parameterType, ParameterType_Float);
    EXPECT_DOUBLE_EQ(data->value, 10000.0);
    EXPECT_DOUBLE_EQ(data->minimum, 10.0);
    EXPECT_DOUBLE_EQ(data->maximum, 1e6);
    EXPECT_FALSE(data->hasIncrement);
    EXPECT_EQ(data->displayPrecision, 1);
    EXPECT_EQ(data->representation, "Logarithmic");
    EXPECT_EQ(data->valueText, "10000.0");
    auto rate = typed<CFloatParameter>("AcquisitionFrameRate")
                    ->getParameterData()
                    .dynamicCast<const FloatParameterData>();
    EXPECT_TRUE(rate->hasIncrement);
    EXPECT_DOUBLE_EQ(rate->increment, 0.5);
    EXPECT_EQ(rate->displayPrecision, 2);
    EXPECT_EQ(rate->valueText, "30.00");
}

namespace {

// Holds the state lock on a thread of its own from construction until release().
class CStateLockHolder {
public:
    explicit CStateLockHolder(CObjectState& state) {
        std::promise<void> locked;
        m_Thread = std::thread([this, &state, &locked] {
            CScopedObjectStateLock lock(&state);
            locked.set_value();
            m_Release.get_future().wait();
        });
        locked.get_future().wait();
    }
    ~CStateLockHolder() { release(); }
    void release() {
        if (!m_Thread.joinable())
            return;
        m_Release.set_value();
        m_Thread.join();
    }

private:
    std::promise<void> m_Release;
    std::thread m_Thread;
};

}  // namespace

// The unchecked write takes no state lock: it completes while another thread holds it. The correcting
// write does take it, and so waits for the holder.
TEST_F(NumericParametersTest, UncorrectedIntegerWriteTakesNoStateLock) {
    auto width = typed<CIntegerParameter>("Width");
    CStateLockHolder holder(state());
    auto write = std::async(std::launch::async, [&] { width->setValue(800, IntegerValueCorrection_None); });
    const bool completed = write.wait_for(std::chrono::seconds(5)) == std::future_status::ready;
    holder.release();
    write.get();
    EXPECT_TRUE(completed);
    EXPECT_EQ(deviceInteger("Width"), 800);

    CStateLockHolder again(state());
    auto corrected =
        std::async(std::launch::async, [&] { width->setValue(640, IntegerValueCorrection_Nearest); });
    EXPECT_EQ(corrected.wait_for(std::chrono::milliseconds(100)), std::future_status::timeout);
    again.release();
    corrected.get();
    EXPECT_EQ(deviceInteger("Width"), 640);
}
