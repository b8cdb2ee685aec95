// A GenApi client that includes every header of GenApi's published interface, GenApi/GenApi.h first, and
// uses something from each: the typed references generated parameter classes bind, recording and replaying
// port writes, stacked ports, selector sets, value arrays and the platform definitions.
#include <GenApi/GenApi.h>
#include <GenICam.h>
#include <GenICamFwd.h>
#include <GenICamVersion.h>
#include <Base/GCArray.h>
#include <Base/GCBase.h>
#include <Base/GCCompatibility.h>
#include <Base/GCError.h>
#include <Base/GCException.h>
#include <Base/GCLinkage.h>
#include <Base/GCNamespace.h>
#include <Base/GCRTSSUtilities.h>
#include <Base/GCString.h>
#include <Base/GCStringVector.h>
#include <Base/GCSynch.h>
#include <Base/GCTypes.h>
#include <Base/GCUtilities.h>
#include <GenApi/Autovector.h>
#include <GenApi/ChunkAdapter.h>
#include <GenApi/ChunkAdapterDcam.h>
#include <GenApi/ChunkAdapterGEV.h>
#include <GenApi/ChunkAdapterGenDC.h>
#include <GenApi/ChunkAdapterGeneric.h>
#include <GenApi/ChunkAdapterU3V.h>
#include <GenApi/ChunkPort.h>
#include <GenApi/Compatibility.h>
#include <GenApi/ConcatenatedWrite.h>
#include <GenApi/Container.h>
#include <GenApi/Counter.h>
#include <GenApi/DLLLoad.h>
#include <GenApi/EnumClasses.h>
#include <GenApi/EventAdapter.h>
#include <GenApi/EventAdapter1394.h>
#include <GenApi/EventAdapterCL.h>
#include <GenApi/EventAdapterGEV.h>
#include <GenApi/EventAdapterGeneric.h>
#include <GenApi/EventAdapterU3V.h>
#include <GenApi/EventPort.h>
#include <GenApi/Filestream.h>
#include <GenApi/GenApiDll.h>
#include <GenApi/GenApiLinkage.h>
#include <GenApi/GenApiNamespace.h>
#include <GenApi/GenApiVersion.h>
#include <GenApi/IBase.h>
#include <GenApi/IBoolean.h>
#include <GenApi/ICategory.h>
#include <GenApi/IChunkPort.h>
#include <GenApi/ICommand.h>
#include <GenApi/IDestroy.h>
#include <GenApi/IDeviceInfo.h>
#include <GenApi/IEnumEntry.h>
#include <GenApi/IEnumeration.h>
#include <GenApi/IEnumerationT.h>
#include <GenApi/IFloat.h>
#include <GenApi/IInteger.h>
#include <GenApi/INode.h>
#include <GenApi/INodeMap.h>
#include <GenApi/INodeMapDyn.h>
#include <GenApi/IPort.h>
#include <GenApi/IPortConstruct.h>
#include <GenApi/IPortRecorder.h>
#include <GenApi/IPortStacked.h>
#include <GenApi/IRegister.h>
#include <GenApi/ISelector.h>
#include <GenApi/ISelectorDigit.h>
#include <GenApi/IString.h>
#include <GenApi/IUserData.h>
#include <GenApi/IValue.h>
#include <GenApi/NodeCallback.h>
#include <GenApi/NodeMapFactory.h>
#include <GenApi/NodeMapRef.h>
#include <GenApi/Persistence.h>
#include <GenApi/Pointer.h>
#include <GenApi/PortImpl.h>
#include <GenApi/PortStackedImpl.h>
#include <GenApi/PortWriteList.h>
#include <GenApi/Reference.h>
#include <GenApi/RegisterSetHelper.h>
#include <GenApi/SelectorSet.h>
#include <GenApi/SelectorState.h>
#include <GenApi/StructPort.h>
#include <GenApi/Synch.h>
#include <GenApi/Types.h>
#include <GenApi/ValueArrayAdapter.h>
#include "SimulatedCameraFixture.h"
#include "WordMap.h"
#include <cstdio>
#include <gtest/gtest.h>

using namespace GenApi;
using GenICam::gcstring;

namespace {

// The C++ enumeration a code generator writes for PixelFormat, with one entry the camera lacks.
enum PixelFormatEnums { PixelFormat_Mono8, PixelFormat_Mono10, PixelFormat_YUV422_8 };

// A parameter class as GenICam's code generator writes it: typed members bound by name in _Initialize.
class CSimulatedCameraParams {
public:
    CSimulatedCameraParams()
        : Width(*new CIntegerRef),
          ExposureTime(*new CFloatRef),
          ReverseX(*new CBooleanRef),
          AcquisitionStart(*new CCommandRef),
          DeviceModelName(*new CStringRef),
          TestRegister(*new CRegisterRef),
          PixelFormat(*new CEnumerationTRef<PixelFormatEnums>),
          DeviceModelLength(*new CIntegerRef) {}
    ~CSimulatedCameraParams() {
        delete static_cast<CIntegerRef*>(&Width);
        delete static_cast<CFloatRef*>(&ExposureTime);
        delete static_cast<CBooleanRef*>(&ReverseX);
        delete static_cast<CCommandRef*>(&AcquisitionStart);
        delete static_cast<CStringRef*>(&DeviceModelName);
        delete static_cast<CRegisterRef*>(&TestRegister);
        delete static_cast<CEnumerationTRef<PixelFormatEnums>*>(&PixelFormat);
        delete static_cast<CIntegerRef*>(&DeviceModelLength);
    }
    CSimulatedCameraParams(const CSimulatedCameraParams&) = delete;
    CSimulatedCameraParams& operator=(const CSimulatedCameraParams&) = delete;

    void _Initialize(INodeMap* pNodeMap) {
        bind(Width, pNodeMap, "Width");
        bind(ExposureTime, pNodeMap, "ExposureTime");
        bind(ReverseX, pNodeMap, "ReverseX");
        bind(AcquisitionStart, pNodeMap, "AcquisitionStart");
        bind(DeviceModelName, pNodeMap, "DeviceModelName");
        bind(TestRegister, pNodeMap, "TestRegister");
        bind(PixelFormat, pNodeMap, "PixelFormat");
        // A feature this camera does not have stays unbound.
        bind(DeviceModelLength, pNodeMap, "DeviceModelLength");
        IEnumReference& pixelFormat = dynamic_cast<IEnumReference&>(PixelFormat);
        pixelFormat.SetNumEnums(3);
        pixelFormat.SetEnumReference(PixelFormat_Mono8, "Mono8");
        pixelFormat.SetEnumReference(PixelFormat_Mono10, "Mono10");
        pixelFormat.SetEnumReference(PixelFormat_YUV422_8, "YUV422_8");
    }

    IInteger& Width;
    IFloat& ExposureTime;
    IBoolean& ReverseX;
    ICommand& AcquisitionStart;
    IString& DeviceModelName;
    IRegister& TestRegister;
    IEnumerationT<PixelFormatEnums>& PixelFormat;
    IInteger& DeviceModelLength;

private:
    static void bind(IBase& reference, INodeMap* pNodeMap, const char* name) {
        dynamic_cast<IReference&>(reference).SetReference(pNodeMap->GetNode(name));
    }
};

class PublishedHeaders : public SimulatedCameraTest {};

// A user port that takes stacked writes and counts them.
class CStackedWordPort : public CPortStackedImpl {
public:
    EAccessMode GetAccessMode() const override { return RW; }
    void Read(void* buffer, int64_t address, int64_t length) override { words.Read(buffer, address, length); }
    void Write(const void* buffer, int64_t address, int64_t length) override {
        ++singleWrites;
        words.Write(buffer, address, length);
    }
    void Write(PORT_REGISTER_STACK_ENTRY* entries, size_t count) override {
        for (size_t i = 0; i < count; ++i)
            Write(entries[i].pBuffer, static_cast<int64_t>(entries[i].Address),
                  static_cast<int64_t>(entries[i].Size));
    }
    bool connected() const { return m_ptrPort.IsValid(); }
    CWordPort words;
    int singleWrites = 0;
};

}  // namespace

TEST_F(PublishedHeaders, AGeneratedParameterClassReadsAndWritesThroughItsReferences) {
    CSimulatedCameraParams params;
    params._Initialize(map());

    // Bound references forward every call to their node.
    params.Width = 640;
    EXPECT_EQ(params.Width(), 640);
    EXPECT_EQ(integer("Width")->GetValue(), 640);
    EXPECT_EQ(params.Width.GetAccessMode(), RW);
    EXPECT_EQ(params.Width.GetNode()->GetName(), "Width");
    EXPECT_EQ(params.Width.GetMin(), integer("Width")->GetMin());
    params.ExposureTime.SetValue(2500.0);
    EXPECT_DOUBLE_EQ(params.ExposureTime.GetValue(), 2500.0);
    EXPECT_EQ(params.ExposureTime.GetUnit(), floating("ExposureTime")->GetUnit());
    params.ReverseX = true;
    EXPECT_TRUE(params.ReverseX());
    params.ReverseX.FromString("0");
    EXPECT_EQ(params.ReverseX.ToString(), "0");
    EXPECT_EQ(params.DeviceModelName.GetValue(), CStringPtr(map()->GetNode("DeviceModelName"))->GetValue());
    EXPECT_TRUE(params.AcquisitionStart.IsDone());
    const uint8_t written[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    params.TestRegister.Set(written, 8);
    uint8_t read[8] = {};
    params.TestRegister.Get(read, 8);
    EXPECT_EQ(std::vector<uint8_t>(read, read + 8), std::vector<uint8_t>(written, written + 8));
    EXPECT_EQ(params.TestRegister.GetLength(), 8);

    // The typed enumeration maps C++ values to the entries they name (Mono10 is there while enabled).
    integer("TestMono10Available")->SetValue(1);
    params.PixelFormat = PixelFormat_Mono8;
    EXPECT_EQ(params.PixelFormat(), PixelFormat_Mono8);
    EXPECT_EQ(params.PixelFormat.ToString(), "Mono8");
    EXPECT_EQ(params.PixelFormat.GetEntry(PixelFormat_Mono8)->GetSymbolic(), "Mono8");
    EXPECT_EQ(params.PixelFormat.GetCurrentEntry()->GetSymbolic(), "Mono8");
    params.PixelFormat = gcstring("Mono10");
    EXPECT_EQ(enumeration("PixelFormat")->ToString(), "Mono10");
    EXPECT_EQ(params.PixelFormat(), PixelFormat_Mono10);
    // An entry the camera lacks: no entry, and writing it is refused as a feature not present.
    EXPECT_EQ(params.PixelFormat.GetEntry(PixelFormat_YUV422_8), nullptr);
    EXPECT_THROW(params.PixelFormat.SetValue(PixelFormat_YUV422_8), GenICam::AccessException);
    EXPECT_EQ(params.PixelFormat(), PixelFormat_Mono10);

    // An unbound reference is not implemented, and using it throws.
    EXPECT_EQ(params.DeviceModelLength.GetAccessMode(), NI);
    EXPECT_FALSE(IsAvailable(params.DeviceModelLength.GetAccessMode()));
    const std::string text =
        descriptionOf<GenICam::AccessException>([&] { params.DeviceModelLength.GetValue(); });
    EXPECT_EQ(text, "Feature not present (reference not valid)");
}

TEST_F(PublishedHeaders, PortWritesAreRecordedAndReplayed) {
    CPortRecorderPtr port = map()->GetNode("Device");
    ASSERT_TRUE(port.IsValid());
    CPortWriteList list;
    EXPECT_EQ(list.GetCookie(), -1);
    list.SetCookie(7);
    EXPECT_EQ(list.GetCookie(), 7);

    // Recorded writes still reach the device.
    port->StartRecording(&list);
    integer("Width")->SetValue(640);
    integer("Height")->SetValue(480);
    port->StopRecording();
    EXPECT_EQ(integer("Width")->GetValue(), 640);
    integer("Width")->SetValue(320);
    integer("Height")->SetValue(240);

    // Replaying writes them again, and the nodes read the device afresh.
    port->Replay(&list);
    EXPECT_EQ(integer("Width")->GetValue(), 640);
    EXPECT_EQ(integer("Height")->GetValue(), 480);
    EXPECT_THROW(list.Replay(nullptr), GenICam::InvalidArgumentException);
}

TEST(PublishedHeadersStacked, StackedPortsTakeRegisterSets) {
    CNodeMapRef described;
    described._LoadXMLFromString(description(intReg("A", 0) + intReg("B", 4)).c_str());
    CStackedWordPort port;
    ASSERT_TRUE(described._Ptr->Connect(static_cast<IPortStacked*>(&port), "Device"));
    EXPECT_TRUE(port.connected());

    CRegisterSetHelperT<PORT_REGISTER_STACK_ENTRY> set;
    set.AddValue<uint32_t>(0, 0x11223344u, false);
    set.AddValue<uint32_t>(4, 0x55667788u, true);
    ASSERT_EQ(set.GetNumEntries(), 2u);
    CPointer<IPortStacked> portNode = described._GetNode("Device");
    ASSERT_TRUE(portNode.IsValid());
    portNode->Write(set.GetEntries(), set.GetNumEntries());
    EXPECT_EQ(port.singleWrites, 2);
    EXPECT_EQ(CIntegerPtr(described._GetNode("A"))->GetValue(), 0x11223344);
    EXPECT_EQ(CIntegerPtr(described._GetNode("B"))->GetValue(), 0x88776655);
    set.Clear();
    EXPECT_EQ(set.GetEntries(), nullptr);
    // The engine's maps are made from one description, not node by node.
    EXPECT_EQ(dynamic_cast<INodeMapDyn*>(described._Ptr), nullptr);
}

TEST_F(PublishedHeaders, SelectorSetsValueArraysAndPlatformDefinitions) {
    // A selected feature's selectors, stepped through and put back.
    CSelectorSet selectors(map()->GetNode("TriggerMode"));
    ASSERT_FALSE(selectors.IsEmpty());
    ASSERT_TRUE(selectors.SetFirst());
    EXPECT_EQ(selectors.ToString(), "TriggerSelector=FrameStart");
    ASSERT_TRUE(selectors.SetNext());
    EXPECT_EQ(selectors.ToString(), "TriggerSelector=AcquisitionStart");
    CSelectorState state;
    selectors.GetState(state);
    EXPECT_FALSE(state.IsEmpty());
    selectors.Restore();
    EXPECT_EQ(enumeration("TriggerSelector")->ToString(), "FrameStart");
    EXPECT_TRUE(state.RestoreState(map()));
    EXPECT_EQ(enumeration("TriggerSelector")->ToString(), "AcquisitionStart");
    ISelectorDigit& digit = selectors;
    FeatureList_t list;
    digit.GetSelectorList(list);
    EXPECT_EQ(list.size(), 1u);

    // A register as four big-endian 16-bit values.
    CValueArrayAdapterT<uint16_t> values(CRegisterPtr(map()->GetNode("TestRegister")), BigEndian);
    EXPECT_EQ(values.GetSize(), 4u);
    values.SetValue(2, 0xABCD);
    uint8_t raw[8] = {};
    CRegisterPtr(map()->GetNode("TestRegister"))->Get(raw, 8);
    EXPECT_EQ(raw[4], 0xAB);
    EXPECT_EQ(raw[5], 0xCD);
    EXPECT_EQ(values.GetValue(2), 0xABCD);
    EXPECT_THROW(values.GetValue(4), GenICam::OutOfRangeException);
    EXPECT_THROW(values.SetValues(std::vector<uint16_t>(3)), GenICam::OutOfRangeException);

    // The platform's definitions.
    char formatted[32];
    std::snprintf(formatted, sizeof formatted, "%" FMT_I64 "d", static_cast<int64_t>(-1234567890123LL));
    EXPECT_STREQ(formatted, "-1234567890123");
    EXPECT_EQ(GenICam::GC_ERR_TIMEOUT, -1011);
    CCounter depth;
    {
        CCounterGuard guard(depth);
        EXPECT_EQ(static_cast<uint32_t>(depth), 1u);
    }
    EXPECT_TRUE(depth.IsZero());
    CreateNodeMapFromDllFn_t noLibrary = nullptr;
    EXPECT_EQ(noLibrary, nullptr);
    EXPECT_EQ(gcstring(EVisibilityClass::ToString(Guru).c_str()), "Guru");
}
