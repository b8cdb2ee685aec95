// The base parameter on the simulated camera: binding, access, guards, text, callbacks and snapshots.
#include "LibraryFixture.h"
#include <GenApi/GenApi.h>
#include <GenApiEngine/AravisDevices.h>
#include <QSignalSpy>
#include <parametercollection/internal/BooleanParameter.h>
#include <parametercollection/internal/EnumParameter.h>
#include <parametercollection/internal/FloatParameter.h>
#include <parametercollection/internal/IntegerParameter.h>
#include <parametercollection/internal/StringParameter.h>

using namespace Core::Exception;
namespace R = SimCamera::Registers;

TEST_F(LibraryTest, ANeverAttachedParameterIsEmptyAndSaysSo) {
    QSharedPointer<CParameter> lonely = parameter("Width", false);
    EXPECT_TRUE(lonely->isEmpty());
    EXPECT_FALSE(lonely->isReadable());
    EXPECT_FALSE(lonely->isWriteable());
    EXPECT_FALSE(lonely->isAvailable());
    EXPECT_FALSE(lonely->isImplemented());
    EXPECT_EQ(lonely->getVisibility(), 99);
    EXPECT_EQ(lonely->getParameterType(), ParameterType_Undefined);
    EXPECT_EQ(lonely->toString(), "<not found>");
    EXPECT_EQ(lonely->getName(), "Width");
    EXPECT_EQ(lonely->getFullName(), "@CameraDevice/Width");
    EXPECT_EQ(messageOf<InvalidOperationException>([&] { lonely->parseAndSetValue("64"); }),
              "Node is empty.");
    EXPECT_EQ(messageOf<InvalidOperationException>([&] { lonely->raiseExceptionIfNotReadable(); }),
              "Node is empty.");
    QSharedPointer<const ParameterData> data = lonely->getParameterData();
    EXPECT_TRUE(data->isEmpty);
    EXPECT_EQ(data->visibility, 99);
    EXPECT_TRUE(data->valueText.isEmpty());
}

TEST_F(LibraryTest, AttachDetachAndReattach) {
    QSharedPointer<CParameter> width = parameter("Width");
    EXPECT_FALSE(width->isEmpty());
    EXPECT_TRUE(width->isReadable());
    EXPECT_TRUE(width->isWriteable());
    EXPECT_TRUE(width->isAvailable());
    EXPECT_TRUE(width->isImplemented());
    EXPECT_EQ(width->getVisibility(), 0);
    EXPECT_EQ(width->getParameterType(), ParameterType_Integer);
    EXPECT_EQ(width->toString(), "640");

    EXPECT_FALSE(width->attach(nullptr));
    EXPECT_TRUE(width->isEmpty());
    EXPECT_EQ(width->toString(), "<not found>");
    EXPECT_TRUE(width->attach(map()));
    EXPECT_EQ(width->toString(), "640");

    // A map without the feature leaves the earlier binding in place.
    GenApi::CNodeMapRef fake(GenApiEngine::createAravisFakeDevice());
    QSharedPointer<CParameter> hex = parameter("TestHexInteger");
    EXPECT_FALSE(hex->attach(fake._Ptr));
    EXPECT_FALSE(hex->isEmpty());
    EXPECT_EQ(hex->toString(), "0xcafe");

    // Parameter types follow the node's principal interface.
    const std::pair<const char*, EParameterType> kinds[] = {
        {"ExposureTime", ParameterType_Float},      {"ReverseX", ParameterType_Boolean},
        {"TimestampLatch", ParameterType_Command},  {"DeviceUserID", ParameterType_String},
        {"PixelFormat", ParameterType_Enumeration}, {"Root", ParameterType_Category},
        {"TestRegister", ParameterType_Register},   {"EnumEntry_PixelFormat_Mono8", ParameterType_Undefined},
        {"Device", ParameterType_Undefined}};
    for (const auto& kind : kinds)
        EXPECT_EQ(parameter(kind.first)->getParameterType(), kind.second) << kind.first;
    EXPECT_EQ(parameter("Root")->toString(), "Root");  // a category's text is its display name
    // Parameters travel through QVariant and convert to QObject*.
    QSharedPointer<IParameter> shared = width;
    const QVariant variant = QVariant::fromValue(shared);
    EXPECT_EQ(variant.value<QObject*>(), static_cast<QObject*>(width.data()));
    for (const char* name : {"QSharedPointer<const ParameterCollection::ParameterData>",
                             "QSharedPointer<const ParameterData>", "QSharedPointer<IParameter>"}) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
        EXPECT_TRUE(QMetaType::fromName(name).isValid()) << name;
#else
        EXPECT_NE(QMetaType::type(name), 0) << name;
#endif
    }
    EXPECT_EQ(parameter("Device")->toString(), "<no value>");
}

TEST_F(LibraryTest, AliasBinding) {
    QSharedPointer<CParameter> legacy = parameter("ExposureTimeAbs", false);
    legacy->setIsAlias(true);
    ASSERT_TRUE(legacy->attach(map()));
    EXPECT_EQ(legacy->getAdvancedParameterAccess()->getProperty("DisplayName"), "Exposure Time");
    EXPECT_EQ(legacy->toString(), "10000.0");  // the alias' display precision
    // A node without an alias is treated like a missing one.
    QSharedPointer<CParameter> width = parameter("Width", false);
    width->setIsAlias(true);
    EXPECT_FALSE(width->attach(map()));
    EXPECT_TRUE(width->isEmpty());
}

TEST_F(LibraryTest, GuardsFollowTheObjectStateAndTheAccessMode) {
    QSharedPointer<CParameter> readOnly = parameter("TestReadOnlyInteger");
    QSharedPointer<CParameter> writeOnly = parameter("TestWriteOnlyInteger");
    EXPECT_TRUE(readOnly->isReadable());
    EXPECT_FALSE(readOnly->isWriteable());
    EXPECT_EQ(messageOf<InvalidOperationException>([&] { readOnly->parseAndSetValue("1"); }),
              "Node not writable.");
    EXPECT_EQ(messageOf<InvalidOperationException>([&] { writeOnly->raiseExceptionIfNotReadable(); }),
              "Node not readable.");
    EXPECT_EQ(writeOnly->toString(), "<error>");
    writeOnly->parseAndSetValue("-3");
    EXPECT_EQ(static_cast<int32_t>(camera().peekRegister(R::TestWriteOnlyInteger)), -3);

    // Closed: plain reads and writes still reach GenApi, the decoupled check refuses.
    state().setState(ObjectState_Closed);
    QSharedPointer<CParameter> width = parameter("Width");
    width->parseAndSetValue("320");
    EXPECT_EQ(width->toString(), "320");
    EXPECT_EQ(messageOf<InvalidOperationException>([&] { width->checkParameterDataChanged(); }),
              "Device is closed.");

    // Disposed: the value text says so even with a node bound, and writes refuse.
    state().setState(ObjectState_Disposed);
    EXPECT_EQ(width->toString(), "<disposed>");
    EXPECT_EQ(messageOf<ObjectDisposedException>([&] { width->parseAndSetValue("336"); }),
              "The parent object of the parameter @CameraDevice/Width has been disposed.");
    EXPECT_EQ(messageOf<ObjectDisposedException>([&] { width->checkParameterDataChanged(); }),
              "The parent object of the parameter @CameraDevice/Width has been disposed.");
    EXPECT_TRUE(width->isReadable());  // access queries still consult the node
}

TEST_F(LibraryTest, WritesAreAnnouncedThenReachTheDevice) {
    QSharedPointer<CParameter> pixelFormat = parameter("PixelFormat");
    QSignalSpy announced(pixelFormat.data(), &IParameter::parameterValueAboutToBeSet);
    uint32_t registerWhenAnnounced = 0;
    QObject::connect(pixelFormat.data(), &IParameter::parameterValueAboutToBeSet,
                     [&] { registerWhenAnnounced = camera().peekRegister(R::PixelFormat); });
    pixelFormat->parseAndSetValue("Mono16");
    ASSERT_EQ(announced.count(), 1);
    EXPECT_EQ(announced.at(0).at(0).toString(), "Mono16");
    EXPECT_EQ(registerWhenAnnounced, 0x01080001u);  // announced before the write
    EXPECT_EQ(camera().peekRegister(R::PixelFormat), 0x01100007u);
    // A refused write is still announced, since the announcement comes first.
    EXPECT_THROW(pixelFormat->parseAndSetValue("Mono99"), ArgumentException);
    EXPECT_EQ(announced.count(), 2);
    EXPECT_THROW(parameter("Root")->parseAndSetValue("x"), InvalidOperationException);
}

TEST_F(LibraryTest, NodeCallbacksBecomeParameterChangedSignals) {
    QSharedPointer<CParameter> width = parameter("Width");
    QSignalSpy changed(width.data(), &IParameter::parameterChanged);
    // A write elsewhere that changes Width's maximum is a change of Width.
    parameter("OffsetX")->parseAndSetValue("64");
    EXPECT_EQ(changed.count(), 1);
    width->parseAndSetValue("512");
    EXPECT_EQ(changed.count(), 2);

    width->setIsCallbackEnabled(false);
    width->parseAndSetValue("528");
    EXPECT_EQ(changed.count(), 2);
    width->setIsCallbackEnabled(true);

    // Registering twice in a row toggles the callback off.
    width->registerGenICamCallback();
    width->parseAndSetValue("544");
    EXPECT_EQ(changed.count(), 2);
    width->registerGenICamCallback();
    width->parseAndSetValue("560");
    EXPECT_EQ(changed.count(), 3);
    // Detached parameters hear nothing.
    width->attach(nullptr);
    parameter("Width")->parseAndSetValue("576");
    EXPECT_EQ(changed.count(), 3);
}

TEST_F(LibraryTest, SnapshotsAndThePendingChangeRule) {
    QSharedPointer<CParameter> width = parameter("Width");
    QSharedPointer<const ParameterData> data = width->getParameterData();
    EXPECT_EQ(data->parameterType, ParameterType_Integer);
    EXPECT_EQ(data->visibility, 0);
    EXPECT_TRUE(data->isReadable);
    EXPECT_TRUE(data->isWriteable);
    EXPECT_TRUE(data->isImplemented);
    EXPECT_FALSE(data->isEmpty);
    EXPECT_EQ(data->valueText, "640");
    // Copies are handed out: a later refresh does not touch an earlier copy.
    width->parseAndSetValue("800");
    EXPECT_EQ(width->getParameterData()->valueText, "800");
    EXPECT_EQ(data->valueText, "640");

    // The read saw the change, so the next check still reports it, once.
    CDecoupledRecorder recorder(*width);
    EXPECT_TRUE(width->checkParameterDataChanged());
    EXPECT_EQ(recorder.count(), 1);
    EXPECT_EQ(recorder.last()->valueText, "800");
    EXPECT_FALSE(width->checkParameterDataChanged());
    EXPECT_EQ(recorder.count(), 1);

    // Access changes count as well: locking makes the feature read-only.
    parameter("TLParamsLocked")->parseAndSetValue("1");
    EXPECT_TRUE(width->checkParameterDataChanged());
    EXPECT_FALSE(recorder.last()->isWriteable);

    // A refresh whose text cannot be read leaves the snapshot invalid and reports the failure.
    camera().setFailure(SimCamera::CSimulatedCamera::EFailure::IoError);
    QSharedPointer<CParameter> temperature = parameter("DeviceTemperature");
    EXPECT_THROW(temperature->getParameterData(), Core::Exception::BaseException);
    camera().setFailure(SimCamera::CSimulatedCamera::EFailure::None);
    EXPECT_TRUE(temperature->updateCachedParameterData());
}

// Every value getter refuses a node that is not readable with the library's own message, and reads again
// once the node is readable; a parameter without a node says it is empty.
TEST_F(LibraryTest, ValueGettersRefuseUnreadableNodesWithTheLibrarysMessage) {
    auto width = typed<CIntegerParameter>("Width");
    auto exposure = typed<CFloatParameter>("ExposureTime");
    auto reverse = typed<CBooleanParameter>("ReverseX");
    auto user = typed<CStringParameter>("DeviceUserID");
    auto format = typed<CEnumParameter>("PixelFormat");
    const std::vector<std::function<void()>> reads = {
        [&] { width->getValue(); }, [&] { exposure->getValue(); }, [&] { reverse->getValue(false, false); },
        [&] { user->getValue(); }, [&] { format->getIntValue(false, false); }};
    for (const char* name : {"Width", "ExposureTime", "ReverseX", "DeviceUserID", "PixelFormat"})
        node(name)->ImposeAccessMode(GenApi::WO);
    for (const auto& read : reads)
        EXPECT_EQ(messageOf<InvalidOperationException>(read), "Node not readable.");
    for (const char* name : {"Width", "ExposureTime", "ReverseX", "DeviceUserID", "PixelFormat"})
        node(name)->ImposeAccessMode(GenApi::RW);
    for (const auto& read : reads)
        EXPECT_NO_THROW(read());
    EXPECT_EQ(
        messageOf<InvalidOperationException>([&] { typed<CIntegerParameter>("NoSuchFeature")->getValue(); }),
        "Node is empty.");
}
