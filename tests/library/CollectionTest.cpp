// The collection end to end on the simulated camera: names, typed and untyped gets, node map management,
// signals, relations, destruction, feature streams and the SFNC version.
#include "LibraryFixture.h"
#include <GenApi/GenApi.h>
#include <GenApiEngine/AravisDevices.h>
#include <QSet>
#include <QSignalSpy>
#include <QTemporaryFile>
#include <atomic>
#include <parametercollection/ParameterCollection.h>
#include <parametercollection/ParameterPath.h>
#include <parametercollection/SfncVersion.h>
#include <parametercollection/internal/IntegerParameter.h>
#include <parametercollection/internal/NodemapWrapper.h>
#include <parametercollection/internal/ParameterCollectionImpl.h>
#include <thread>

using namespace Core::Exception;

class CollectionTest : public ::testing::Test {
protected:
    CollectionTest() : m_State(new CObjectState(nullptr)), m_Collection(new CParameterCollection(m_State)) {
        m_Collection->announceNodeMap(ParameterPath::CameraDevice);
        m_Collection->announceNodeMap(ParameterPath::StreamGrabber0);
        m_Collection->attachNodeMap(ParameterPath::CameraDevice, m_Device.nodeMap());
        m_State->setState(ObjectState_Open);
    }
    ~CollectionTest() override {
        if (m_Collection)
            m_Collection->detachAllNodeMaps();
    }

    CParameterCollection& collection() { return *m_Collection; }
    GenApi::INodeMap* map() const { return m_Device.nodeMap(); }
    SimCamera::CSimulatedCamera& camera() { return m_Device.camera(); }

    SimCamera::CSimulatedDevice m_Device;
    QSharedPointer<CObjectState> m_State;
    QScopedPointer<CParameterCollection> m_Collection;
};

TEST(FullNames, AreParsedIntoNodeMapFeatureAndAlias) {
    QSharedPointer<CObjectState> state(new CObjectState(nullptr));
    CParameterCollectionImpl impl(state);
    QString feature = "untouched";
    QString nodeMap = "untouched";
    bool isAlias = true;
    EXPECT_EQ(impl.parseFullName(feature, nodeMap, isAlias, "Width"), nullptr);  // nothing announced
    EXPECT_FALSE(isAlias);
    CNodemapWrapper device("@CameraDevice", impl.m_Decoupler, state);
    CNodemapWrapper stream("@StreamGrabber0", impl.m_Decoupler, state);
    impl.m_WrapperList = {&device, &stream};
    impl.m_WrapperMap = {{"@CameraDevice", &device}, {"@StreamGrabber0", &stream}};

    EXPECT_EQ(impl.parseFullName(feature, nodeMap, isAlias, "@CameraDevice/Width"), &device);
    EXPECT_EQ(feature, "Width");
    EXPECT_EQ(nodeMap, "@CameraDevice");
    EXPECT_FALSE(isAlias);
    EXPECT_EQ(impl.parseFullName(feature, nodeMap, isAlias, "@StreamGrabber0//Width/Alias"), &stream);
    EXPECT_TRUE(isAlias);
    impl.parseFullName(feature, nodeMap, isAlias, "@CameraDevice/Width/alias");
    EXPECT_FALSE(isAlias);
    impl.parseFullName(feature, nodeMap, isAlias, "@CameraDevice/Width/Alias/X");
    EXPECT_FALSE(isAlias);
    EXPECT_EQ(impl.parseFullName(feature, nodeMap, isAlias, "@CameraDevice"), nullptr);
    EXPECT_EQ(impl.parseFullName(feature, nodeMap, isAlias, "@"), nullptr);
    EXPECT_EQ(impl.parseFullName(feature, nodeMap, isAlias, "@Unknown/Gain"), nullptr);
    EXPECT_EQ(feature, "Gain");
    EXPECT_EQ(nodeMap, "@Unknown");
    EXPECT_EQ(impl.parseFullName(feature, nodeMap, isAlias, "Height"), &device);  // the first announced map
    EXPECT_EQ(feature, "Height");
    EXPECT_EQ(nodeMap, "@CameraDevice");
    EXPECT_EQ(impl.parseFullName(feature, nodeMap, isAlias, QString()), nullptr);
    EXPECT_EQ(impl.parseFullName(feature, nodeMap, isAlias, QString("")), &device);
    EXPECT_EQ(feature, "");
    impl.m_WrapperList.clear();
    impl.m_WrapperMap.clear();
    EXPECT_EQ(ParameterPath::CameraInstance, "@CameraInstance");
    EXPECT_EQ(ParameterPath::Interface, "@Interface");
    EXPECT_EQ(IntegerParameterName("@CameraDevice/Width").getFullName(), "@CameraDevice/Width");
}

TEST_F(CollectionTest, TypedGetsAlternativesAliasesAndDummies) {
    QSharedPointer<IIntegerParameter> width = collection().get(IntegerParameterName("@CameraDevice/Width"));
    EXPECT_EQ(width->getValue(), 640);
    EXPECT_EQ(collection().get(IntegerParameterName("Width")), width);  // cached, bare name
    // The typed get ignores the alias suffix: it answers the cached plain parameter.
    EXPECT_EQ(collection().get(IntegerParameterName("@CameraDevice/Width/Alias")), width);
    // Alternatives: the first that exists wins.
    QSharedPointer<IIntegerParameter> height =
        collection().get(IntegerParameterName("@CameraDevice/NoSuchFeature|@CameraDevice/Height"));
    EXPECT_EQ(height->getFullName(), "@CameraDevice/Height");
    EXPECT_EQ(height->getValue(), 480);
    // Unknown names give fresh, unbound objects every time.
    QSharedPointer<IIntegerParameter> missing =
        collection().get(IntegerParameterName("@CameraDevice/NoSuchFeature"));
    EXPECT_FALSE(missing->isAvailable());
    EXPECT_TRUE(missing->isEmpty());
    EXPECT_NE(collection().get(IntegerParameterName("@CameraDevice/NoSuchFeature")), missing);
    EXPECT_TRUE(collection().get(FloatParameterName("@Unannounced/ExposureTime"))->isEmpty());
    EXPECT_TRUE(collection().get(IntegerParameterName("@StreamGrabber0/Width"))->isEmpty());  // not attached

    EXPECT_DOUBLE_EQ(collection().get(FloatParameterName("ExposureTime"))->getValue(), 10000.0);
    EXPECT_EQ(collection().get(EnumParameterName("PixelFormat"))->getValue(), "Mono8");
    EXPECT_EQ(collection().get(StringParameterName("DeviceModelName"))->getValue(), "SimCam-1");
    EXPECT_FALSE(collection().get(BooleanParameterName("ReverseX"))->getValue(false, false));
    EXPECT_TRUE(collection().get(CommandParameterName("TimestampLatch"))->isDone());
    uint32_t value = 0;
    collection()
        .get(PortParameterName("Device"))
        ->readRaw(SimCamera::Registers::TestReadOnlyInteger, &value, 4);
    EXPECT_EQ(value, 42u);
    // Device files: a parameter for any name of an announced node map, contained when the device lists it.
    EXPECT_FALSE(collection().get(FileParameterName("@CameraDevice/UserSet1")).isNull());
    EXPECT_TRUE(collection().contains(FileParameterName("@CameraDevice/UserSet1")));
    EXPECT_FALSE(collection().contains(FileParameterName("@CameraDevice/NoSuchFile")));
}

TEST_F(CollectionTest, UntypedGetsChooseTheClassByInterface) {
    QSharedPointer<IParameter> width = collection().get(ParameterName("@CameraDevice/Width"));
    ASSERT_TRUE(width);
    EXPECT_TRUE(width.dynamicCast<IIntegerParameter>());
    EXPECT_EQ(width, collection().get(IntegerParameterName("@CameraDevice/Width")));  // one object per name
    EXPECT_TRUE(collection().get(ParameterName("PixelFormat")).dynamicCast<IEnumParameter>());
    EXPECT_TRUE(collection().get(ParameterName("Device")).dynamicCast<IPortParameter>());
    QSharedPointer<IParameter> category = collection().get(ParameterName("Root"));
    ASSERT_TRUE(category);
    EXPECT_EQ(category->getParameterType(), ParameterType_Category);
    EXPECT_FALSE(category.dynamicCast<IIntegerParameter>());
    // The untyped alias view is a separate parameter, cached under Name/Alias.
    QSharedPointer<IParameter> alias = collection().get(ParameterName("@CameraDevice/ExposureTimeAbs/Alias"));
    ASSERT_TRUE(alias);
    EXPECT_EQ(alias->toString(), "10000.0");
    EXPECT_EQ(collection().get(ParameterName("@CameraDevice/ExposureTimeAbs/Alias")), alias);
    EXPECT_NE(collection().get(ParameterName("@CameraDevice/ExposureTimeAbs")), alias);
    // A node without an alias gives nothing for Name/Alias; unknown names give null.
    EXPECT_FALSE(collection().get(ParameterName("@CameraDevice/Width/Alias")));
    EXPECT_FALSE(collection().get(ParameterName("@CameraDevice/NoSuchFeature")));
    EXPECT_TRUE(collection().get(ParameterName("@CameraDevice/NoSuchFeature|Gain")));

    EXPECT_TRUE(collection().contains(ParameterName("Width")));
    EXPECT_TRUE(collection().contains(ParameterName("@CameraDevice/ExposureTimeAbs/Alias")));
    EXPECT_FALSE(collection().contains(ParameterName("@CameraDevice/Width/Alias")));
    EXPECT_TRUE(collection().contains(IntegerParameterName("Height")));  // uncached, by interface
    EXPECT_FALSE(collection().contains(FloatParameterName("Height")));
    EXPECT_TRUE(collection().contains(EnumParameterName("@CameraDevice/X|TriggerMode")));
    EXPECT_FALSE(collection().contains(StringParameterName("NoSuchFeature")));
    EXPECT_TRUE(collection().contains(CommandParameterName("AcquisitionStart")));
    EXPECT_TRUE(collection().contains(BooleanParameterName("ReverseY")));
    EXPECT_TRUE(collection().contains(PortParameterName("Device")));
    EXPECT_FALSE(collection().contains(FloatParameterName("Width")));  // cached as an integer
}

TEST_F(CollectionTest, AskingForOneNameWithTwoTypesIsFatal) {
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    collection().get(IntegerParameterName("@CameraDevice/Width"));
    collection().get(IntegerParameterName("@CameraDevice/Width"));  // now answered from the names resolved
    EXPECT_DEATH(collection().get(FloatParameterName("@CameraDevice/Width")), "Error: TypeMismatch");
}

namespace {

// A parameter that cannot be detached, to reach the wrapper's failure path on a real node map.
class CUndetachableParameter : public CParameter {
public:
    using CParameter::CParameter;
    bool attach(GenApi::INodeMap* nodeMap) override {
        if (!nodeMap)
            throw RuntimeException("cannot be detached");
        return CParameter::attach(nodeMap);
    }
};

}  // namespace

TEST_F(CollectionTest, AFailingReattachIsFatal) {
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    QSharedPointer<CObjectState> state(new CObjectState(nullptr));
    QSharedPointer<CModeratedParameterEventDecouplerThread> decoupler(
        new CModeratedParameterEventDecouplerThread(state));
    CNodemapWrapper wrapper("@CameraDevice", decoupler, state);
    wrapper.Attach(map());
    ASSERT_FALSE(wrapper.createAndAddToListIfNoDummy<CUndetachableParameter>("Width", false)->isEmpty());
    EXPECT_DEATH(wrapper.Attach(nullptr), "Attaching node map failed!");
    wrapper.lookUpWithKnownTypeInParameterCollection<CParameter>("Width")->setIsAlias(false);
}

TEST_F(CollectionTest, ParametersSurviveDetachAndReattachAsTheSameObjects) {
    QSharedPointer<IIntegerParameter> width = collection().get(IntegerParameterName("Width"));
    QSharedPointer<IEnumParameter> pixelFormat = collection().get(EnumParameterName("PixelFormat"));
    QSharedPointer<IParameter> untyped = collection().get(ParameterName("Width"));
    EXPECT_EQ(untyped, width);
    collection().detachNodeMap(ParameterPath::CameraDevice);
    // A name asked before still gives no untyped result while its parameter is unbound.
    EXPECT_TRUE(collection().get(ParameterName("Width")).isNull());
    EXPECT_EQ(collection().get(IntegerParameterName("Width")), width);
    EXPECT_TRUE(width->isEmpty());
    EXPECT_FALSE(width->isAvailable());
    EXPECT_EQ(width->toString(), "<not found>");
    EXPECT_TRUE(collection().getParameterCollectionNames().isEmpty());
    collection().attachNodeMap(ParameterPath::CameraDevice, map());
    EXPECT_EQ(collection().get(IntegerParameterName("Width")), width);
    EXPECT_EQ(collection().get(ParameterName("Width")), untyped);
    EXPECT_EQ(width->getValue(), 640);
    EXPECT_EQ(pixelFormat->getValue(), "Mono8");
    // A second device of the same kind: the same objects now read the new device.
    SimCamera::CSimulatedDevice second;
    second.camera().pokeRegister(SimCamera::Registers::Width, 1280);
    collection().detachNodeMap(ParameterPath::CameraDevice);
    collection().attachNodeMap(ParameterPath::CameraDevice, second.nodeMap());
    EXPECT_EQ(width->getValue(), 1280);
    collection().detachAllNodeMaps();
    EXPECT_TRUE(width->isEmpty());
}

TEST_F(CollectionTest, NodeMapManagementAndItsSignal) {
    QSignalSpy attached(m_Collection.data(), &IParameterCollection::nodeMapAttached);
    // The signal comes after the lock is released: another thread can take it from the receiver.
    std::atomic<bool> lockFreeInReceiver{false};
    QObject::connect(m_Collection.data(), &IParameterCollection::nodeMapAttached, [&] {
        std::thread([&] {
            m_State->lock();
            lockFreeInReceiver = true;
            m_State->unlock();
        }).join();
    });
    collection().attachNodeMap(ParameterPath::StreamGrabber0, map());
    ASSERT_EQ(attached.count(), 1);
    EXPECT_EQ(attached.at(0).at(0).toString(), "@StreamGrabber0");
    EXPECT_TRUE(lockFreeInReceiver);
    EXPECT_EQ(collection().getParameterCollectionNames(),
              QList<QString>({"@CameraDevice", "@StreamGrabber0"}));
    EXPECT_EQ(collection().get(IntegerParameterName("@StreamGrabber0/Width"))->getValue(), 640);

    // A name never announced attaches nothing but is reported; a null map reports nothing.
    collection().attachNodeMap("@NotAnnounced", map());
    EXPECT_EQ(attached.count(), 2);
    EXPECT_EQ(attached.at(1).at(0).toString(), "@NotAnnounced");
    EXPECT_TRUE(collection().get(IntegerParameterName("@NotAnnounced/Width"))->isEmpty());
    collection().attachNodeMap(ParameterPath::StreamGrabber0, nullptr);
    EXPECT_EQ(attached.count(), 2);
    EXPECT_EQ(collection().getParameterCollectionNames(), QList<QString>({"@CameraDevice"}));

    // Detaching an unknown name leaves it without a wrapper, even after announcing it.
    collection().detachNodeMap("@Unknown");
    collection().announceNodeMap("@Unknown");
    collection().attachNodeMap("@Unknown", map());
    EXPECT_TRUE(collection().get(IntegerParameterName("@Unknown/Width"))->isEmpty());
    EXPECT_FALSE(collection().getParameterCollectionNames().contains("@Unknown"));
    // Announcing twice keeps one wrapper, in the first place.
    collection().announceNodeMap(ParameterPath::CameraDevice);
    EXPECT_EQ(collection().getParameterCollectionNames(), QList<QString>({"@CameraDevice"}));
}

TEST_F(CollectionTest, RelationsAllParametersPollAndInvalidate) {
    EXPECT_EQ(collection().getParameterRelation("@CameraDevice/GainSelector",
                                                ParameterRelation_SelectedFeatures, false),
              QList<QString>({"@CameraDevice/Gain", "@CameraDevice/GainRaw"}));
    EXPECT_EQ(
        collection().getParameterRelation("@CameraDevice/Gain", ParameterRelation_SelectingFeatures, false),
        QList<QString>({"@CameraDevice/GainSelector"}));
    const QList<QString> analog = collection().getParameterRelation(
        "@CameraDevice/AnalogControl", ParameterRelation_CategoryFeatures, false);
    EXPECT_EQ(analog.size(), 5);
    EXPECT_EQ(analog.first(), "@CameraDevice/GainSelector");
    EXPECT_EQ(collection().getParameterRelation("@CameraDevice/Width", ParameterRelation_CategoryPath, false),
              QList<QString>({"@CameraDevice/Root", "@CameraDevice/ImageFormatControl"}));
    // Non-features are left out unless all nodes are asked for.
    EXPECT_TRUE(
        collection()
            .getParameterRelation("@CameraDevice/FileSelector", ParameterRelation_SelectedFeatures, false)
            .contains("@CameraDevice/FileSize"));
    EXPECT_TRUE(collection()
                    .getParameterRelation("@CameraDevice/Width", ParameterRelation_CategoryFeatures, false)
                    .isEmpty());
    EXPECT_TRUE(collection()
                    .getParameterRelation("@StreamGrabber0/Width", ParameterRelation_CategoryPath, false)
                    .isEmpty());
    EXPECT_TRUE(collection()
                    .getParameterRelation("@CameraDevice/NoSuch", ParameterRelation_SelectedFeatures, true)
                    .isEmpty());

    // Every node of the attached map yields one parameter.
    EXPECT_EQ(static_cast<uint64_t>(collection().getAllParameter().size()), map()->GetNumNodes());

    // Polling reaches the node map: the temperature's parameter hears the change.
    QSharedPointer<IFloatParameter> temperature = collection().get(FloatParameterName("DeviceTemperature"));
    QSignalSpy changed(temperature.data(), &IParameter::parameterChanged);
    collection().poll(999);
    EXPECT_EQ(changed.count(), 0);
    collection().poll(1);
    EXPECT_EQ(changed.count(), 1);
    // Invalidation drops cached values: a change behind the library's back becomes visible.
    QSharedPointer<IIntegerParameter> width = collection().get(IntegerParameterName("Width"));
    EXPECT_EQ(width->getValue(), 640);
    camera().pokeRegister(SimCamera::Registers::Width, 320);
    EXPECT_EQ(width->getValue(), 640);
    collection().invalidate();
    EXPECT_EQ(width->getValue(), 320);
}

TEST_F(CollectionTest, DestructionLeavesHeldParametersEmpty) {
    QSharedPointer<IIntegerParameter> width = collection().get(IntegerParameterName("Width"));
    QSharedPointer<IParameter> exposure = collection().get(ParameterName("ExposureTime"));
    CDecoupledRecorder recorder(*exposure);
    exposure->scheduleParameterDataChangedCheck(true);  // starts the decoupler
    m_Collection.reset();
    EXPECT_TRUE(width->isEmpty());
    EXPECT_EQ(width->toString(), "<not found>");
    m_State->setState(ObjectState_Disposed);
    EXPECT_EQ(width->toString(), "<disposed>");
    EXPECT_THROW(width->getValue(), ObjectDisposedException);
    EXPECT_THROW(exposure->parseAndSetValue("100"), ObjectDisposedException);
}

TEST_F(CollectionTest, FeatureStreamsAndTheSfncVersion) {
    EXPECT_EQ(collection().getSfncVersion(), Sfnc_2_5_0);
    collection().get(IntegerParameterName("Width"))->setValue(1024, true);
    collection().get(EnumParameterName("PixelFormat"))->setValue(QString("Mono16"));
    const QString stream = collection().saveFeatureStreamToString(ParameterPath::CameraDevice);
    EXPECT_TRUE(stream.contains("Width\t1024\n"));
    EXPECT_TRUE(stream.contains("PixelFormat\tMono16\n"));
    EXPECT_FALSE(stream.contains("DeviceVendorName"));  // read-only
    EXPECT_TRUE(collection().saveFeatureStreamToString("@NotAnnounced").isEmpty());

    collection().get(IntegerParameterName("Width"))->setValue(640, true);
    QString error = "untouched";
    EXPECT_TRUE(collection().loadFeatureStreamFromString(stream, error, ParameterPath::CameraDevice));
    EXPECT_EQ(collection().get(IntegerParameterName("Width"))->getValue(), 1024);
    EXPECT_FALSE(collection().loadFeatureStreamFromString(stream, error, "@NotAnnounced"));
    EXPECT_EQ(error, "untouched");
    // An unknown feature fails with the service's text, and callbacks work again afterwards.
    QSharedPointer<IIntegerParameter> width = collection().get(IntegerParameterName("Width"));
    QSignalSpy changed(width.data(), &IParameter::parameterChanged);
    const QString broken = stream.section('\n', 0, 0) + "\nWidth\t512\nNoSuchFeature\t1\n";
    EXPECT_FALSE(collection().loadFeatureStreamFromString(broken, error, ParameterPath::CameraDevice));
    EXPECT_TRUE(error.contains("NoSuchFeature"));
    width->setValue(256, true);
    EXPECT_GE(changed.count(), 1);
    EXPECT_FALSE(
        collection().loadFeatureStream("/nonexistent/features.txt", error, ParameterPath::CameraDevice));

    // Aravis' fake camera has no SFNC version features.
    GenApi::CNodeMapRef fake(GenApiEngine::createAravisFakeDevice());
    collection().detachNodeMap(ParameterPath::CameraDevice);  // the owner detaches before the next device
    collection().attachNodeMap(ParameterPath::CameraDevice, fake._Ptr);
    EXPECT_EQ(collection().getSfncVersion(), Sfnc_VersionUndefined);
    collection().detachAllNodeMaps();
}

TEST_F(CollectionTest, TypedAndUntypedGetsOfOneAliasTextKeepTheirOwnAnswers) {
    // Typed first: it answers plain Width; the untyped get of the same text asks for Width's alias,
    // which Width does not have.
    const QString widthAlias = "@CameraDevice/Width/Alias";
    QSharedPointer<IIntegerParameter> width = collection().get(IntegerParameterName(widthAlias));
    EXPECT_EQ(width->getFullName(), "@CameraDevice/Width");
    EXPECT_TRUE(collection().get(ParameterName(widthAlias)).isNull());
    EXPECT_FALSE(collection().contains(ParameterName(widthAlias)));
    EXPECT_EQ(collection().get(IntegerParameterName(widthAlias)), width);

    // Untyped first: it answers the alias view of ExposureTimeAbs (ExposureTime); the typed get of the
    // same text answers the plain ExposureTimeAbs, once and for all the same object.
    const QString exposureAlias = "@CameraDevice/ExposureTimeAbs/Alias";
    QSharedPointer<IParameter> alias = collection().get(ParameterName(exposureAlias));
    ASSERT_FALSE(alias.isNull());
    EXPECT_EQ(alias, collection().get(ParameterName(exposureAlias)));
    QSharedPointer<IFloatParameter> plain = collection().get(FloatParameterName(exposureAlias));
    EXPECT_NE(plain.dynamicCast<IParameter>(), alias);
    EXPECT_EQ(plain, collection().get(FloatParameterName("@CameraDevice/ExposureTimeAbs")));
    EXPECT_EQ(plain, collection().get(FloatParameterName(exposureAlias)));
    EXPECT_EQ(alias, collection().get(ParameterName(exposureAlias)));
    EXPECT_EQ(collection().get(ParameterName("@CameraDevice/ExposureTimeAbs")), plain);
}

// A typed get on a node of another interface is bound but never cached, so nothing in the collection
// may keep it: after a detach the collection hands out an unbound object, and destroying the collection
// after its device never touches the old node (ASan sees a use after free otherwise).
TEST(CollectionOfOneDevice, ATypedGetOnAnotherInterfaceIsNeverKept) {
    QSharedPointer<CObjectState> state(new CObjectState(nullptr));
    QScopedPointer<CParameterCollection> collection(new CParameterCollection(state));
    auto device = std::make_unique<SimCamera::CSimulatedDevice>();
    collection->announceNodeMap(ParameterPath::CameraDevice);
    collection->attachNodeMap(ParameterPath::CameraDevice, device->nodeMap());
    state->setState(ObjectState_Open);

    const EnumParameterName widthAsEnumeration("@CameraDevice/Width");
    QSharedPointer<IEnumParameter> first = collection->get(widthAsEnumeration);
    EXPECT_FALSE(first->isEmpty());
    EXPECT_TRUE(first->getAllValues().isEmpty());
    EXPECT_FALSE(first->canSetValue("Mono8"));
    QSharedPointer<IEnumParameter> second = collection->get(widthAsEnumeration);
    EXPECT_NE(first, second);  // a fresh object each time, as for every uncached parameter
    first.reset();
    second.reset();

    collection->detachNodeMap(ParameterPath::CameraDevice);
    EXPECT_TRUE(collection->get(widthAsEnumeration)->isEmpty());
    collection->attachNodeMap(ParameterPath::CameraDevice, device->nodeMap());
    EXPECT_FALSE(collection->get(widthAsEnumeration)->isEmpty());
    collection->detachNodeMap(ParameterPath::CameraDevice);
    device.reset();
    collection.reset();
}

// A load writes with callbacks off: a parameter hears only the invalidation every node map gets after
// it, successful or not, and a real file loads like a text.
TEST_F(CollectionTest, FeatureStreamLoadsSuppressCallbacksAndInvalidateEveryNodeMap) {
    SimCamera::CSimulatedDevice grabber;
    collection().attachNodeMap(ParameterPath::StreamGrabber0, grabber.nodeMap());
    QSharedPointer<IIntegerParameter> width = collection().get(IntegerParameterName("Width"));
    QSharedPointer<IIntegerParameter> otherWidth =
        collection().get(IntegerParameterName("@StreamGrabber0/Width"));
    EXPECT_EQ(otherWidth->getValue(), 640);  // kept by GenApi from now on

    width->setValue(1024, true);
    const QString stream = collection().saveFeatureStreamToString(ParameterPath::CameraDevice);
    width->setValue(640, true);
    QSignalSpy changed(width.data(), &IParameter::parameterChanged);
    collection().invalidate();
    const int byInvalidation = changed.count();
    changed.clear();

    grabber.camera().pokeRegister(SimCamera::Registers::Width, 800);
    QString error;
    ASSERT_TRUE(collection().loadFeatureStreamFromString(stream, error, ParameterPath::CameraDevice))
        << error.toStdString();
    EXPECT_EQ(changed.count(), byInvalidation);
    EXPECT_EQ(width->getValue(), 1024);
    EXPECT_EQ(otherWidth->getValue(), 800);

    grabber.camera().pokeRegister(SimCamera::Registers::Width, 720);
    const QString broken = stream.section('\n', 0, 0) + "\nNoSuchFeature\t1\n";
    EXPECT_FALSE(collection().loadFeatureStreamFromString(broken, error, ParameterPath::CameraDevice));
    EXPECT_EQ(otherWidth->getValue(), 720);

    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    file.write(stream.toUtf8());
    file.close();
    width->setValue(640, true);
    EXPECT_TRUE(collection().loadFeatureStream(file.fileName(), error, ParameterPath::CameraDevice))
        << error.toStdString();
    EXPECT_EQ(width->getValue(), 1024);
    collection().detachNodeMap(ParameterPath::StreamGrabber0);
}

namespace {

const std::string versionDescription = testDescription(R"(
  <Integer Name="DeviceSFNCVersionMajor"><Value>2</Value></Integer>
  <Integer Name="DeviceSFNCVersionMinor"><pIsAvailable>Zero</pIsAvailable><Value>7</Value></Integer>
  <Integer Name="DeviceSFNCVersionSubMinor"><Value>3</Value></Integer>
  <Integer Name="Zero"><Value>0</Value></Integer>
)");

}  // namespace

TEST_F(CollectionTest, SfncVersionCountsAnUnreadablePartAsZeroAndAnErrorAsUndefined) {
    GenApi::CNodeMapRef version;
    version._LoadXMLFromString(versionDescription.c_str());
    collection().detachNodeMap(ParameterPath::CameraDevice);
    collection().attachNodeMap(ParameterPath::CameraDevice, version._Ptr);
    EXPECT_EQ(collection().getSfncVersion(), QVersionNumber(2, 0, 3));
    collection().detachNodeMap(ParameterPath::CameraDevice);

    collection().attachNodeMap(ParameterPath::CameraDevice, map());
    camera().setFailure(SimCamera::CSimulatedCamera::EFailure::IoError);
    collection().invalidate();  // nothing kept: the version is read from the failing device
    EXPECT_EQ(collection().getSfncVersion(), Sfnc_VersionUndefined);
    camera().setFailure(SimCamera::CSimulatedCamera::EFailure::None);
    EXPECT_EQ(collection().getSfncVersion(), Sfnc_2_5_0);
}

// The three parts of the version come from one device even while the owner switches devices.
TEST_F(CollectionTest, SfncVersionIsNeverMixedFromTwoDevices) {
    GenApi::CNodeMapRef older;
    older._LoadXMLFromString(testDescription(R"(
  <Integer Name="DeviceSFNCVersionMajor"><Value>1</Value></Integer>
  <Integer Name="DeviceSFNCVersionMinor"><Value>2</Value></Integer>
  <Integer Name="DeviceSFNCVersionSubMinor"><Value>1</Value></Integer>
)")
                                 .c_str());
    std::atomic<bool> stop{false};
    std::thread owner([&] {
        for (int i = 0; !stop; ++i) {
            collection().detachNodeMap(ParameterPath::CameraDevice);
            collection().attachNodeMap(ParameterPath::CameraDevice, i % 2 ? map() : older._Ptr);
        }
    });
    QSet<QString> seen;
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 300)
        seen.insert(collection().getSfncVersion().toString());
    stop = true;
    owner.join();
    collection().detachNodeMap(ParameterPath::CameraDevice);
    seen -= QSet<QString>({"2.5.0", "1.2.1", "0.0.0"});
    EXPECT_TRUE(seen.isEmpty()) << QStringList(seen.values()).join(", ").toStdString();
}
