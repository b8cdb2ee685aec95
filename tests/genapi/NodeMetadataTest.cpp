// Node metadata of the simulated camera: properties, alias, access, visibility, relations and device info.
#include "SimulatedCameraFixture.h"
#include <GenApi/EnumClasses.h>
#include <algorithm>

using namespace GenApi;

namespace {

bool contains(const NodeList_t& nodes, const char* name) {
    return std::any_of(nodes.begin(), nodes.end(), [&](INode* n) { return n->GetName() == name; });
}

}  // namespace

TEST_F(SimulatedCameraTest, DescriptiveMetadataComesFromTheDescription) {
    INode* exposure = node("ExposureTime");
    EXPECT_STREQ(exposure->GetToolTip().c_str(), "Exposure time in microseconds.");
    EXPECT_STREQ(exposure->GetDescription().c_str(), "Duration of the exposure of each frame.");
    EXPECT_STREQ(exposure->GetDisplayName().c_str(), "Exposure Time");
    EXPECT_STREQ(exposure->GetDocuURL().c_str(), "http://www.emva.org/standards-technology/genicam/");
    EXPECT_FALSE(exposure->IsDeprecated());
    EXPECT_TRUE(exposure->IsStreamable());
    EXPECT_EQ(exposure->GetNameSpace(), Standard);
    EXPECT_STREQ(exposure->GetName(true).c_str(), "Std::ExposureTime");
    EXPECT_EQ(map()->GetNode("Std::ExposureTime"), exposure);
    EXPECT_STREQ(floating("ExposureTime")->GetUnit().c_str(), "us");
    EXPECT_EQ(floating("ExposureTime")->GetRepresentation(), Logarithmic);
    EXPECT_STREQ(integer("Width")->GetUnit().c_str(), "px");

    // A node without a display name shows its name; a custom node is in the custom name space.
    EXPECT_STREQ(node("Height")->GetDisplayName().c_str(), "Height");
    EXPECT_EQ(node("TestReadOnlyInteger")->GetNameSpace(), Custom);
    EXPECT_TRUE(node("ExposureTimeAbs")->IsDeprecated());
    EXPECT_STREQ(node("EventExposureEnd")->GetEventID().c_str(), "9001");
    EXPECT_STREQ(node("EventExposureEndPort")->GetEventID().c_str(), "9001");
    EXPECT_STREQ(dynamic_cast<IChunkPort*>(node("ChunkFrameIDPort"))->GetChunkID().c_str(), "1001");
    EXPECT_EQ(node("DeviceTemperatureRaw")->GetPollingTime(), 1000);
    EXPECT_EQ(node("DeviceTemperature")->GetPollingTime(), -1);  // polled through its register
    EXPECT_EQ(node("Width")->GetPollingTime(), -1);
    EXPECT_STREQ(node("Width")->GetDeviceName().c_str(), "Device");
    EXPECT_EQ(node("Width")->GetNodeMap(), map());

    // Caching follows the registers behind a node.
    EXPECT_EQ(node("WidthReg")->GetCachingMode(), WriteThrough);
    EXPECT_EQ(node("Width")->GetCachingMode(), WriteThrough);
    EXPECT_EQ(node("DeviceTemperature")->GetCachingMode(), NoCache);
    EXPECT_FALSE(node("DeviceTemperature")->IsCachable());
    EXPECT_EQ(node("Width")->IsAccessModeCacheable(), Yes);
}

TEST_F(SimulatedCameraTest, PropertiesAreServedAsGenApiListsThem) {
    INode* width = node("Width");
    GenICam::gcstring_vector names;
    width->GetPropertyNames(names);
    for (const char* expected : {"Name", "ToolTip", "pValue", "Min", "pMax", "Inc", "pIsLocked", "Streamable",
                                 "NodeType", "pTerminal", "pDependent", "Visibility", "DeviceName"}) {
        EXPECT_TRUE(names.contains(expected)) << expected;
    }
    GenICam::gcstring value, attribute;
    ASSERT_TRUE(width->GetProperty("pMax", value, attribute));
    EXPECT_STREQ(value.c_str(), "WidthMax");
    ASSERT_TRUE(width->GetProperty("Min", value, attribute));
    EXPECT_STREQ(value.c_str(), "16");
    EXPECT_FALSE(width->GetProperty("NoSuchProperty", value, attribute));

    // Several occurrences come back tab-separated; attributes of each occurrence likewise, a formula's
    // variables sorted by their names.
    ASSERT_TRUE(node("TriggerSelector")->GetProperty("pSelected", value, attribute));
    EXPECT_STREQ(value.c_str(), "TriggerMode\tTriggerSource");
    ASSERT_TRUE(node("WidthMax")->GetProperty("pVariable", value, attribute));
    EXPECT_STREQ(value.c_str(), "OffsetXReg\tSensorWidth");
    EXPECT_STREQ(attribute.c_str(), "OX\tSW");
    ASSERT_TRUE(node("TriggerModeReg")->GetProperty("pIndex", value, attribute));
    EXPECT_STREQ(value.c_str(), "TriggerSelectorReg");
    EXPECT_STREQ(attribute.c_str(), "4");
    ASSERT_TRUE(width->GetProperty("pTerminal", value, attribute));
    EXPECT_STREQ(value.c_str(), "WidthReg");
    ASSERT_TRUE(node("WidthReg")->GetProperty("Address", value, attribute));
    EXPECT_STREQ(value.c_str(), "264");
    ASSERT_TRUE(node("EnumEntry_PixelFormat_Mono10")->GetProperty("pIsAvailable", value, attribute));
    EXPECT_STREQ(value.c_str(), "TestMono10Available");
}

TEST_F(SimulatedCameraTest, AliasAndPrincipalInterfaceTypes) {
    EXPECT_EQ(node("ExposureTimeAbs")->GetAlias(), node("ExposureTime"));
    EXPECT_EQ(node("ExposureTime")->GetAlias(), nullptr);
    EXPECT_EQ(node("ExposureTime")->GetCastAlias(), nullptr);

    const std::pair<const char*, EInterfaceType> kinds[] = {{"Width", intfIInteger},
                                                            {"WidthReg", intfIInteger},
                                                            {"ReverseXReg", intfIInteger},
                                                            {"PayloadSize", intfIInteger},
                                                            {"BinningHorizontal", intfIInteger},
                                                            {"ExposureTime", intfIFloat},
                                                            {"ExposureTimeReg", intfIFloat},
                                                            {"ExposureTimeMs", intfIFloat},
                                                            {"Gain", intfIFloat},
                                                            {"ReverseX", intfIBoolean},
                                                            {"TimestampLatch", intfICommand},
                                                            {"DeviceUserID", intfIString},
                                                            {"TestString", intfIString},
                                                            {"TestRegister", intfIRegister},
                                                            {"PixelFormat", intfIEnumeration},
                                                            {"EnumEntry_PixelFormat_Mono8", intfIEnumEntry},
                                                            {"Root", intfICategory},
                                                            {"Device", intfIPort}};
    for (const auto& kind : kinds) {
        EXPECT_EQ(node(kind.first)->GetPrincipalInterfaceType(), kind.second) << kind.first;
    }
    // Registers of a value kind also offer the register interface; plain values do not.
    EXPECT_NE(dynamic_cast<IRegister*>(node("WidthReg")), nullptr);
    EXPECT_EQ(dynamic_cast<IRegister*>(node("Width")), nullptr);
    EXPECT_EQ(dynamic_cast<IFloat*>(node("Width")), nullptr);
    EXPECT_STREQ(GetInterfaceName(node("PixelFormat")).c_str(), "IEnumeration");
}

TEST_F(SimulatedCameraTest, AccessModesFollowRegistersLocksAndImposition) {
    EXPECT_EQ(node("Width")->GetAccessMode(), RW);
    EXPECT_EQ(node("TestReadOnlyInteger")->GetAccessMode(), RO);
    EXPECT_EQ(node("TestWriteOnlyInteger")->GetAccessMode(), WO);
    EXPECT_EQ(node("TestWriteOnlyBoolean")->GetAccessMode(), WO);
    EXPECT_EQ(node("PayloadSize")->GetAccessMode(), RO);
    EXPECT_EQ(node("Root")->GetAccessMode(), RO);
    EXPECT_EQ(node("ColorSensorPresent")->GetAccessMode(), RO);

    // Availability through pIsAvailable.
    EXPECT_EQ(node("AcquisitionFrameCount")->GetAccessMode(), NA);
    enumeration("AcquisitionMode")->FromString("MultiFrame");
    EXPECT_EQ(node("AcquisitionFrameCount")->GetAccessMode(), RW);

    // Locking through pIsLocked turns writable features read-only.
    integer("TLParamsLocked")->SetValue(1);
    EXPECT_EQ(node("Width")->GetAccessMode(), RO);
    EXPECT_EQ(node("PixelFormat")->GetAccessMode(), RO);
    integer("TLParamsLocked")->SetValue(0);

    // An imposed access mode governs the node's access, reads and writes.
    node("Width")->ImposeAccessMode(RO);
    EXPECT_EQ(node("Width")->GetAccessMode(), RO);
    EXPECT_THROW(integer("Width")->SetValue(800), GenICam::AccessException);
    node("Width")->ImposeAccessMode(NA);
    EXPECT_EQ(node("Width")->GetAccessMode(), NA);
    EXPECT_THROW(integer("Width")->GetValue(), GenICam::AccessException);
    node("Width")->ImposeAccessMode(RW);
    EXPECT_EQ(node("Width")->GetAccessMode(), RW);

    // An imposed visibility can only make a node more expert.
    EXPECT_EQ(node("Width")->GetVisibility(), Beginner);
    EXPECT_EQ(node("DeviceSerialNumber")->GetVisibility(), Expert);
    node("Width")->ImposeVisibility(Guru);
    EXPECT_EQ(node("Width")->GetVisibility(), Guru);
    node("DeviceSerialNumber")->ImposeVisibility(Beginner);
    EXPECT_EQ(node("DeviceSerialNumber")->GetVisibility(), Expert);

    // A disconnected port makes every register not implemented.
    camera().setConnected(false);
    EXPECT_EQ(node("Device")->GetAccessMode(), NI);
    EXPECT_EQ(node("TestReadOnlyInteger")->GetAccessMode(), NI);
    EXPECT_EQ(node("Width")->GetAccessMode(), NI);
    camera().setConnected(true);
    EXPECT_EQ(node("Width")->GetAccessMode(), RW);
}

TEST_F(SimulatedCameraTest, CategoriesFeaturesAndRelations) {
    FeatureList_t features;
    as<ICategory>("Root")->GetFeatures(features);
    ASSERT_EQ(features.size(), 9u);
    EXPECT_STREQ(features[0]->GetNode()->GetName().c_str(), "DeviceControl");
    as<ICategory>("AnalogControl")->GetFeatures(features);
    EXPECT_EQ(features.size(), 5u);

    // Features are what the Root category reaches; helper registers are not.
    EXPECT_TRUE(node("Width")->IsFeature());
    EXPECT_TRUE(node("ImageFormatControl")->IsFeature());
    EXPECT_FALSE(node("WidthReg")->IsFeature());
    EXPECT_FALSE(node("EnumEntry_PixelFormat_Mono8")->IsFeature());

    NodeList_t nodes;
    node("Width")->GetChildren(nodes);
    EXPECT_TRUE(contains(nodes, "WidthReg"));
    EXPECT_TRUE(contains(nodes, "WidthMax"));
    EXPECT_TRUE(contains(nodes, "TLParamsLocked"));
    node("Width")->GetChildren(nodes, ctWritingChildren);
    ASSERT_EQ(nodes.size(), 1u);
    EXPECT_STREQ(nodes[0]->GetName().c_str(), "WidthReg");
    node("Width")->GetChildren(nodes, ctTerminalNodes);
    EXPECT_TRUE(contains(nodes, "Device"));
    node("OffsetXReg")->GetChildren(nodes, ctDependingNodes);  // the width limit follows the offset
    EXPECT_TRUE(contains(nodes, "WidthMax"));
    EXPECT_TRUE(contains(nodes, "Width"));
    node("WidthReg")->GetParents(nodes);
    EXPECT_TRUE(contains(nodes, "Width"));
    node("GainRaw")->GetParents(nodes);
    EXPECT_TRUE(contains(nodes, "Gain"));
    EXPECT_FALSE(contains(nodes, "GainSelector"));
}

TEST_F(SimulatedCameraTest, NodeMapAndDeviceInformation) {
    NodeList_t nodes;
    map()->GetNodes(nodes);
    EXPECT_EQ(nodes.size(), map()->GetNumNodes());
    EXPECT_GT(nodes.size(), 150u);
    EXPECT_EQ(map()->GetNode("NoSuchNode"), nullptr);
    EXPECT_STREQ(map()->GetDeviceName().c_str(), "Device");

    CDeviceInfoPtr info(map());
    ASSERT_TRUE(info.IsValid());
    EXPECT_STREQ(info->GetModelName().c_str(), "SimCam1");
    EXPECT_STREQ(info->GetVendorName().c_str(), "ParameterCollection");
    Version_t version;
    info->GetDeviceVersion(version);
    EXPECT_EQ(version.Major, 1);
    EXPECT_EQ(version.Minor, 2);
    EXPECT_EQ(version.SubMinor, 3);
    info->GetSchemaVersion(version);
    EXPECT_EQ(version.Minor, 1);
    uint16_t build = 99;
    info->GetGenApiVersion(version, build);
    EXPECT_EQ(version.Major, 3);
    EXPECT_EQ(version.Minor, 4);

    // User data on nodes and maps returns the previous pointer.
    int marker = 0;
    CNodeUserDataPtr nodeData(node("Width"));
    EXPECT_EQ(nodeData->SetUserData(&marker), nullptr);
    EXPECT_EQ(nodeData->GetUserData(), &marker);
    CNodeMapUserDataPtr mapData(map());
    EXPECT_EQ(mapData->SetUserData(&marker), nullptr);
    EXPECT_EQ(mapData->GetUserData(), &marker);
}

TEST_F(SimulatedCameraTest, ConcatenatedWritesApplyInOrderAndCollectErrors) {
    CNodeWriteConcatenatorRef writes(map()->NewNodeWriteConcatenator());
    writes._Add("OffsetX", int64_t(0));
    writes._Add("Width", int64_t(1024));
    writes._Add("PixelFormat", "Mono16");
    writes._Add("ExposureTime", 500.0);
    writes._Add("ReverseX", true);
    EXPECT_TRUE(map()->ConcatenatedWrite(writes));
    EXPECT_EQ(integer("Width")->GetValue(), 1024);
    EXPECT_STREQ(enumeration("PixelFormat")->ToString().c_str(), "Mono16");
    EXPECT_DOUBLE_EQ(floating("ExposureTime")->GetValue(), 500.0);
    EXPECT_TRUE(as<IBoolean>("ReverseX")->GetValue());

    writes._Clear();
    writes._Add("Width", int64_t(5000));
    writes._Add("NoSuchNode", int64_t(1));
    writes._Add("Height", int64_t(240));
    GenICam::gcstring_vector errors;
    EXPECT_FALSE(map()->ConcatenatedWrite(writes, true, &errors));
    EXPECT_EQ(errors.size(), 2u);
    EXPECT_EQ(integer("Height")->GetValue(), 240);
    EXPECT_THROW(map()->ConcatenatedWrite(writes), GenICam::OutOfRangeException);
}
