// Boolean, command, enumeration, string and port parameters on the simulated camera.
#include "LibraryFixture.h"
#include <GenApi/GenApi.h>
#include <QSignalSpy>
#include <parametercollection/internal/BooleanParameter.h>
#include <parametercollection/internal/CommandParameter.h>
#include <parametercollection/internal/EnumParameter.h>
#include <parametercollection/internal/PortParameter.h>
#include <parametercollection/internal/StringParameter.h>

using namespace Core::Exception;
namespace R = SimCamera::Registers;

namespace {

// Finds an entry's node by GenApi's entry name and serves its properties, as the node map wrapper does.
class CEntryPropertySource : public IEnumValueAdvancedParameterAccessSource {
public:
    CEntryPropertySource(GenApi::INodeMap* map, QSharedPointer<CObjectState> state)
        : m_Map(map), m_State(state) {}
    QSharedPointer<IAdvancedParameterAccess> getAdvancedParameterAccess(const QString& parameterName,
                                                                        const QString& valueName) override {
        QSharedPointer<CAdvancedParameterAccess> access(new CAdvancedParameterAccess(m_State));
        const QString entry = "EnumEntry_" + parameterName + "_" + valueName;
        access->attach(m_Map->GetNode(entry.toUtf8().constData()), true);
        return access;
    }

private:
    GenApi::INodeMap* m_Map;
    QSharedPointer<CObjectState> m_State;
};

QStringList spoken(const QSignalSpy& spy) {
    QStringList texts;
    for (const QList<QVariant>& arguments : spy)
        texts.append(arguments.at(0).toString());
    return texts;
}

}  // namespace

class OtherParametersTest : public LibraryTest {
protected:
    QString deviceText(const char* name) {
        return QString::fromLatin1(GenApi::CValuePtr(node(name))->ToString(false, true).c_str());
    }
};

TEST_F(OtherParametersTest, Booleans) {
    auto reverse = typed<CBooleanParameter>("ReverseX");
    EXPECT_EQ(reverse->getParameterType(), ParameterType_Boolean);
    QSignalSpy announced(reverse.data(), &IParameter::parameterValueAboutToBeSet);
    reverse->setValue(true, true);
    EXPECT_EQ(camera().peekRegister(R::ImageFlags), 1u);
    EXPECT_TRUE(reverse->trySetValue(false));
    EXPECT_EQ(camera().peekRegister(R::ImageFlags), 0u);
    EXPECT_EQ(spoken(announced), QStringList({"1", "0"}));
    EXPECT_FALSE(reverse->getValue(false, true));
    EXPECT_EQ(reverse->toString(), "0");
    reverse->parseAndSetValue("true");
    EXPECT_TRUE(reverse->getValue(false, false));

    auto writeOnly = typed<CBooleanParameter>("TestWriteOnlyBoolean");
    EXPECT_TRUE(writeOnly->getValueOrDefault(true));
    EXPECT_FALSE(writeOnly->getValueOrDefault(false));
    EXPECT_THROW(writeOnly->getValue(false, false), InvalidOperationException);
    writeOnly->setValue(true, true);
    EXPECT_EQ(camera().peekRegister(R::TestWriteOnlyBoolean), 1u);
    EXPECT_FALSE(typed<CBooleanParameter>("NoSuchFeature")->trySetValue(true));

    auto data = reverse->getParameterData().dynamicCast<const BooleanParameterData>();
    ASSERT_TRUE(data);
    EXPECT_TRUE(data->value);
    EXPECT_EQ(data->valueText, "1");
    EXPECT_FALSE(writeOnly->getParameterData().dynamicCast<const BooleanParameterData>()->value);
}

TEST_F(OtherParametersTest, Commands) {
    auto latch = typed<CCommandParameter>("TimestampLatch");
    EXPECT_EQ(latch->getParameterType(), ParameterType_Command);
    QSignalSpy announced(latch.data(), &IParameter::parameterValueAboutToBeSet);
    EXPECT_TRUE(latch->isDone());
    latch->execute(true);
    EXPECT_TRUE(latch->isExecuting());  // the device stays busy for one read
    EXPECT_FALSE(latch->isExecuting());
    EXPECT_TRUE(latch->isDone());
    EXPECT_TRUE(latch->tryExecute());
    EXPECT_EQ(announced.count(), 0);  // commands are never announced

    // A detached command is done and not executing.
    auto detached = typed<CCommandParameter>("NoSuchCommand");
    EXPECT_TRUE(detached->isDone());
    EXPECT_FALSE(detached->isExecuting());
    EXPECT_FALSE(detached->tryExecute());

    // "DeviceReset" is never polled; another letter case is.
    QSharedPointer<CCommandParameter> reset = typed<CCommandParameter>("DeviceReset");
    reset->execute(true);
    EXPECT_FALSE(reset->isExecuting());
    camera().setBusyReads(5);
    node("TimestampLatch")->ImposeAccessMode(GenApi::RW);
    latch->execute(true);
    EXPECT_TRUE(latch->isExecuting());

    // A read-only command is not executed by the try; a disposed one refuses.
    node("TriggerSoftware")->ImposeAccessMode(GenApi::RO);
    auto trigger = typed<CCommandParameter>("TriggerSoftware");
    EXPECT_FALSE(trigger->tryExecute());
    EXPECT_EQ(camera().peekRegister(R::TriggerSoftware), 0u);
    auto data = latch->getParameterData().dynamicCast<const CommandParameterData>();
    ASSERT_TRUE(data);
    EXPECT_FALSE(data->isDone);
    EXPECT_TRUE(reset->getParameterData().dynamicCast<const CommandParameterData>()->isDone);  // write-only
    state().setState(ObjectState_Disposed);
    EXPECT_THROW(latch->execute(true), ObjectDisposedException);
}

TEST_F(OtherParametersTest, EnumerationValuesAndLists) {
    auto pixelFormat = typed<CEnumParameter>("PixelFormat");
    EXPECT_EQ(pixelFormat->getParameterType(), ParameterType_Enumeration);
    EXPECT_EQ(pixelFormat->getValue(), "Mono8");
    EXPECT_EQ(pixelFormat->getIntValue(false, false), 0x01080001);
    EXPECT_EQ(pixelFormat->getAllValues(), QVector<QString>({"Mono8", "Mono10", "Mono12", "Mono16"}));
    EXPECT_EQ(pixelFormat->getSettableValues(), QVector<QString>({"Mono8", "Mono12", "Mono16"}));
    EXPECT_TRUE(pixelFormat->canSetValue("Mono12"));
    EXPECT_FALSE(pixelFormat->canSetValue("Mono10"));  // NA
    EXPECT_FALSE(pixelFormat->canSetValue("RGB8"));    // NI
    EXPECT_FALSE(pixelFormat->canSetValue("Mono99"));

    QSignalSpy announced(pixelFormat.data(), &IParameter::parameterValueAboutToBeSet);
    pixelFormat->setValue(QString("Mono16"));
    EXPECT_EQ(camera().peekRegister(R::PixelFormat), 0x01100007u);
    EXPECT_THROW(pixelFormat->setValue(QString("Mono10")), InvalidOperationException);
    EXPECT_THROW(pixelFormat->setValue(QString("Mono99")), ArgumentException);
    EXPECT_EQ(spoken(announced), QStringList({"Mono16", "Mono10", "Mono99"}));
    EXPECT_FALSE(pixelFormat->trySetValue(QString("Mono10")));
    EXPECT_TRUE(pixelFormat->trySetValue(QString("Mono12")));
    EXPECT_EQ(deviceText("PixelFormat"), "Mono12");

    // The list write writes every settable candidate; the try writes the first.
    announced.clear();
    pixelFormat->setValue(QList<QString>({"Mono8", "RGB8", "Mono16"}));
    EXPECT_EQ(deviceText("PixelFormat"), "Mono16");
    EXPECT_EQ(spoken(announced), QStringList({"Mono8", "Mono16"}));
    EXPECT_TRUE(pixelFormat->trySetValue(QList<QString>({"Mono10", "Mono8", "Mono12"})));
    EXPECT_EQ(deviceText("PixelFormat"), "Mono8");
    pixelFormat->setValue(QList<QString>({"RGB8"}));
    EXPECT_EQ(deviceText("PixelFormat"), "Mono8");
    EXPECT_FALSE(pixelFormat->trySetValue(QList<QString>({"RGB8"})));
    state().setState(ObjectState_Disposed);
    EXPECT_EQ(messageOf<InvalidArgumentException>([&] { pixelFormat->setValue(QList<QString>()); }),
              "The passed parameter list must not be empty.");
    EXPECT_THROW(pixelFormat->trySetValue(QList<QString>()), InvalidArgumentException);
}

TEST_F(OtherParametersTest, EnumerationAccessModesMismatchAndEntryProperties) {
    auto status = typed<CEnumParameter>("FileOperationStatus");  // read-only
    EXPECT_FALSE(status->canSetValue("Success"));
    node("TestPattern")->ImposeAccessMode(GenApi::WO);
    auto pattern = typed<CEnumParameter>("TestPattern");
    EXPECT_EQ(pattern->getAllValues().size(), 3);
    EXPECT_THROW(pattern->getSettableValues(), InvalidOperationException);
    EXPECT_EQ(pattern->getValueOrDefault("fallback"), "fallback");

    // A node of another interface: attach answers false and the lists stay empty.
    auto mismatch = QSharedPointer<CEnumParameter>(
        new CEnumParameter("Width", "@CameraDevice", sharedState(), decoupler()));
    EXPECT_FALSE(mismatch->attach(map()));
    EXPECT_TRUE(mismatch->getAllValues().isEmpty());
    EXPECT_FALSE(mismatch->canSetValue("Mono8"));

    // Entry properties come from the installed source.
    auto pixelFormat = typed<CEnumParameter>("PixelFormat");
    EXPECT_EQ(messageOf<ArgumentException>([&] { pixelFormat->getAdvancedValueProperties("Mono8"); }),
              "Invalid enumeration value.");
    CEntryPropertySource source(map(), sharedState());
    pixelFormat->setEnumValueAdvancedParameterAccessSource(&source);
    auto mono10 = pixelFormat->getAdvancedValueProperties("Mono10");
    EXPECT_EQ(mono10->getProperty("ShortDescription"),
              "10 bits per pixel, available while TestMono10Available is 1.");
    EXPECT_EQ(mono10->getProperty("AccessMode"), "NA");
    EXPECT_EQ(mono10->getProperty("PrincipalInterfaceType"), "intfIEnumEntry");
}

TEST_F(OtherParametersTest, EnumerationSnapshot) {
    auto selector = typed<CEnumParameter>("DeviceTemperatureSelector");
    auto data = selector->getParameterData().dynamicCast<const EnumParameterData>();
    ASSERT_TRUE(data);
    EXPECT_EQ(data->parameterType, ParameterType_Enumeration);
    EXPECT_EQ(data->valueText, "Sensor");
    EXPECT_EQ(data->valueDisplayName, "Sensor");
    EXPECT_EQ(data->settableValues, QVector<QString>({"Sensor", "Mainboard"}));
    EXPECT_EQ(data->settableValueDisplayNames, QVector<QString>({"Sensor", "Mainboard"}));
    // The settable list follows availability.
    auto pixelFormat = typed<CEnumParameter>("PixelFormat");
    pixelFormat->getParameterData();
    pixelFormat->checkParameterDataChanged();
    GenApi::CIntegerPtr(node("TestMono10Available"))->SetValue(1);
    CDecoupledRecorder recorder(*pixelFormat);
    EXPECT_TRUE(pixelFormat->checkParameterDataChanged());
    auto changed = recorder.last().dynamicCast<const EnumParameterData>();
    ASSERT_TRUE(changed);
    EXPECT_EQ(changed->settableValues, QVector<QString>({"Mono8", "Mono10", "Mono12", "Mono16"}));
    EXPECT_EQ(changed->settableValueDisplayNames.size(), 4);
}

TEST_F(OtherParametersTest, Strings) {
    auto userId = typed<CStringParameter>("DeviceUserID");
    EXPECT_EQ(userId->getParameterType(), ParameterType_String);
    EXPECT_EQ(userId->getMaxLength(), 16);
    QSignalSpy announced(userId.data(), &IParameter::parameterValueAboutToBeSet);
    userId->setValue("cam-north");
    EXPECT_EQ(deviceText("DeviceUserID"), "cam-north");
    EXPECT_TRUE(userId->trySetValue("cam-south"));
    EXPECT_EQ(userId->getValue(), "cam-south");
    EXPECT_EQ(spoken(announced), QStringList({"cam-north", "cam-south"}));
    EXPECT_THROW(userId->setValue("a name that is far too long"), ArgumentOutOfRangeException);

    auto vendor = typed<CStringParameter>("DeviceVendorName");
    QSignalSpy vendorAnnounced(vendor.data(), &IParameter::parameterValueAboutToBeSet);
    EXPECT_FALSE(vendor->trySetValue("Other"));
    EXPECT_EQ(vendorAnnounced.count(), 0);
    EXPECT_EQ(vendor->getValueOrDefault("x"), "ParameterCollection");
    node("DeviceVendorName")->ImposeAccessMode(GenApi::NA);
    EXPECT_EQ(vendor->getValueOrDefault("x"), "x");
    auto mismatch = QSharedPointer<CStringParameter>(
        new CStringParameter("Width", "@CameraDevice", sharedState(), decoupler()));
    EXPECT_FALSE(mismatch->attach(map()));
    auto data = userId->getParameterData().dynamicCast<const StringParameterData>();
    ASSERT_TRUE(data);
    EXPECT_EQ(data->parameterType, ParameterType_String);
    EXPECT_EQ(data->valueText, "cam-south");
    // Disposed: the default read still consults the node it holds.
    state().setState(ObjectState_Disposed);
    EXPECT_EQ(userId->getValueOrDefault("x"), "cam-south");
}

TEST_F(OtherParametersTest, Ports) {
    auto port = typed<CPortParameter>("Device");
    uint32_t value = 0;
    port->readRaw(R::TestReadOnlyInteger, &value, 4);
    EXPECT_EQ(value, 42u);
    value = 0x12345678;
    port->writeRaw(R::TestRegister, &value, 4);
    EXPECT_EQ(camera().peekRegister(R::TestRegister), 0x12345678u);
    EXPECT_NO_THROW(port->readRaw(0, nullptr, 0));
    EXPECT_EQ(messageOf<ArgumentException>([&] { port->readRaw(0, nullptr, 4); }),
              "CPortParameter::readRaw Invalid buffer passed.");
    EXPECT_EQ(messageOf<ArgumentException>([&] { port->readRaw(0, nullptr, -1); }),
              "CPortParameter::readRaw Argument must not be negative.");
    EXPECT_EQ(messageOf<ArgumentException>([&] { port->writeRaw(0, nullptr, 4); }),
              "CPortParameter::readRaw Invalid buffer passed.");
    EXPECT_EQ(messageOf<ArgumentException>([&] { port->writeRaw(0, &value, -2); }),
              "CPortParameter::readRaw Argument must not be negative.");
    EXPECT_EQ(messageOf<OperationNotSupportedException>([&] { port->parseAndSetValue("anything"); }),
              "This operation is not supported.");
    EXPECT_THROW(port->readRaw(0x10000, &value, 4), RuntimeException);  // outside the register space
    auto notAPort = QSharedPointer<CPortParameter>(
        new CPortParameter("Width", "@CameraDevice", sharedState(), decoupler()));
    EXPECT_FALSE(notAPort->attach(map()));
    EXPECT_THROW(notAPort->readRaw(0, &value, 4), InvalidOperationException);
    state().setState(ObjectState_Disposed);
    EXPECT_THROW(port->parseAndSetValue("anything"), ObjectDisposedException);
    EXPECT_THROW(port->readRaw(0, &value, 4), ObjectDisposedException);
}
