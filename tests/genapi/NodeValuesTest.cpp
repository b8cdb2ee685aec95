// Value round trips through every node kind of the simulated camera, checked in its register space.
#include "SimulatedCameraFixture.h"
#include <cstring>

using namespace GenApi;
namespace R = SimCamera::Registers;

TEST_F(SimulatedCameraTest, IntegerKindsRoundTripToTheRegisters) {
    // Integer with pValue: the write reaches the register and reads back.
    integer("Width")->SetValue(1024);
    EXPECT_EQ(camera().peekRegister(R::Width), 1024u);
    EXPECT_EQ(integer("Width")->GetValue(), 1024);

    // A value changed on the device side is what the next read returns.
    camera().pokeRegister(R::Height, 720);
    EXPECT_EQ(integer("Height")->GetValue(), 720);

    // IntReg read-only, signed.
    EXPECT_EQ(integer("TestReadOnlyInteger")->GetValue(), 42);

    // MaskedIntReg: two booleans share one register, each owning one bit.
    as<IBoolean>("ReverseY")->SetValue(true);
    EXPECT_EQ(camera().peekRegister(R::ImageFlags), 2u);
    as<IBoolean>("ReverseX")->SetValue(true);
    EXPECT_EQ(camera().peekRegister(R::ImageFlags), 3u);
    as<IBoolean>("ReverseY")->SetValue(false);
    EXPECT_EQ(camera().peekRegister(R::ImageFlags), 1u);
    EXPECT_TRUE(as<IBoolean>("ReverseX")->GetValue());

    // IntConverter: the register holds the value minus one.
    integer("BinningHorizontal")->SetValue(3);
    EXPECT_EQ(camera().peekRegister(R::BinningHorizontal), 2u);
    EXPECT_EQ(integer("BinningHorizontal")->GetValue(), 3);

    // IntSwissKnife: the payload follows width, height and pixel size.
    integer("Width")->SetValue(640);
    integer("Height")->SetValue(480);
    EXPECT_EQ(integer("PayloadSize")->GetValue(), 640 * 480);
    enumeration("PixelFormat")->FromString("Mono16");
    EXPECT_EQ(integer("PayloadSize")->GetValue(), 640 * 480 * 2);

    // Eight-byte register.
    EXPECT_EQ(integer("GevMACAddress")->GetValue(), 0x003053123456LL);
}

TEST_F(SimulatedCameraTest, FloatKindsRoundTripToTheRegisters) {
    // Float over a FloatReg.
    floating("ExposureTime")->SetValue(2500.5);
    EXPECT_DOUBLE_EQ(camera().peekDouble(R::ExposureTime), 2500.5);
    EXPECT_DOUBLE_EQ(floating("ExposureTime")->GetValue(), 2500.5);

    // SwissKnife derived from it.
    EXPECT_DOUBLE_EQ(floating("ExposureTimeMs")->GetValue(), 2.5005);

    // Converter over an integer: dB to hundredths of a dB.
    floating("Gain")->SetValue(12.5);
    EXPECT_EQ(camera().peekRegister(R::GainRaw), 1250u);
    EXPECT_DOUBLE_EQ(floating("Gain")->GetValue(), 12.5);

    // Float node holding its own value.
    floating("Gamma")->SetValue(2.2);
    EXPECT_DOUBLE_EQ(floating("Gamma")->GetValue(), 2.2);

    // A huge range keeps extreme values.
    floating("TestFloatHugeRange")->SetValue(-9.5e299);
    EXPECT_DOUBLE_EQ(camera().peekDouble(R::TestFloatHugeRange), -9.5e299);
}

TEST_F(SimulatedCameraTest, StringsRegistersAndPortsRoundTrip) {
    IString* userId = as<IString>("DeviceUserID");
    EXPECT_EQ(userId->GetMaxLength(), 16);
    userId->SetValue("line-3-cam");
    EXPECT_STREQ(userId->GetValue().c_str(), "line-3-cam");
    EXPECT_STREQ(as<IString>("DeviceVendorName")->GetValue().c_str(), "ParameterCollection");
    // A read-only string reports its current length as its maximum.
    EXPECT_EQ(as<IString>("DeviceModelName")->GetMaxLength(), 8);
    // A String node keeps its text itself.
    as<IString>("TestString")->SetValue("changed");
    EXPECT_STREQ(as<IString>("TestString")->GetValue().c_str(), "changed");

    IRegister* reg = as<IRegister>("TestRegister");
    EXPECT_EQ(reg->GetLength(), 8);
    EXPECT_EQ(reg->GetAddress(), R::TestRegister);
    const uint8_t written[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    reg->Set(written, 8);
    uint8_t read[8] = {};
    reg->Get(read, 8);
    EXPECT_EQ(std::memcmp(written, read, 8), 0);
    EXPECT_EQ(camera().peekRegister(R::TestRegister), 0x04030201u);

    // Raw port access on the port node.
    IPort* port = as<IPort>("Device");
    uint32_t value = 0;
    port->Read(&value, R::TestReadOnlyInteger, 4);
    EXPECT_EQ(value, 42u);
    const uint32_t pattern = 2;
    port->Write(&pattern, R::TestPattern, 4);
    EXPECT_STREQ(enumeration("TestPattern")->ToString().c_str(), "GreyVerticalRamp");
}

TEST_F(SimulatedCameraTest, EnumerationsAndTheirEntries) {
    IEnumeration* pixelFormat = enumeration("PixelFormat");
    EXPECT_STREQ(pixelFormat->ToString().c_str(), "Mono8");
    EXPECT_EQ(pixelFormat->GetIntValue(), 0x01080001);

    // Symbolics list only what can be chosen: Mono10 is NA, RGB8 and BayerRG8 are NI.
    StringList_t symbolics;
    pixelFormat->GetSymbolics(symbolics);
    ASSERT_EQ(symbolics.size(), 3u);
    EXPECT_STREQ(symbolics[0].c_str(), "Mono8");
    EXPECT_STREQ(symbolics[1].c_str(), "Mono12");
    EXPECT_STREQ(symbolics[2].c_str(), "Mono16");
    NodeList_t entries;
    pixelFormat->GetEntries(entries);
    EXPECT_EQ(entries.size(), 6u);

    // Entries are nodes of their own with GenApi's names and access modes.
    EXPECT_EQ(node("EnumEntry_PixelFormat_Mono8")->GetAccessMode(), RO);
    EXPECT_EQ(node("EnumEntry_PixelFormat_Mono10")->GetAccessMode(), NA);
    EXPECT_EQ(node("EnumEntry_PixelFormat_RGB8")->GetAccessMode(), NI);
    EXPECT_EQ(node("EnumEntry_PixelFormat_Mono8")->GetPrincipalInterfaceType(), intfIEnumEntry);

    // Availability follows the feature it points to.
    integer("TestMono10Available")->SetValue(1);
    EXPECT_EQ(node("EnumEntry_PixelFormat_Mono10")->GetAccessMode(), RO);
    pixelFormat->FromString("Mono10");
    EXPECT_EQ(camera().peekRegister(R::PixelFormat), 0x01100003u);

    IEnumEntry* mono16 = pixelFormat->GetEntryByName("Mono16");
    ASSERT_NE(mono16, nullptr);
    EXPECT_EQ(mono16->GetValue(), 0x01100007);
    EXPECT_STREQ(mono16->GetSymbolic().c_str(), "Mono16");
    pixelFormat->SetIntValue(mono16->GetValue());
    EXPECT_EQ(pixelFormat->GetCurrentEntry(), mono16);
    EXPECT_EQ(pixelFormat->GetEntry(0x01100007), mono16);
    EXPECT_EQ(pixelFormat->GetEntryByName("NoSuchFormat"), nullptr);
    EXPECT_EQ(pixelFormat->GetEntry(12345), nullptr);
    *pixelFormat = "Mono12";
    EXPECT_STREQ((**pixelFormat).c_str(), "Mono12");
}

TEST_F(SimulatedCameraTest, SelectorsWorkBothWays) {
    // Selected features of a selector, and the selectors of a selected feature.
    ISelector* triggerSelector = as<ISelector>("TriggerSelector");
    EXPECT_TRUE(triggerSelector->IsSelector());
    FeatureList_t selected;
    triggerSelector->GetSelectedFeatures(selected);
    ASSERT_EQ(selected.size(), 2u);
    EXPECT_STREQ(selected[0]->GetNode()->GetName().c_str(), "TriggerMode");
    EXPECT_STREQ(selected[1]->GetNode()->GetName().c_str(), "TriggerSource");
    FeatureList_t selecting;
    as<ISelector>("Gain")->GetSelectingFeatures(selecting);
    ASSERT_EQ(selecting.size(), 1u);
    EXPECT_STREQ(selecting[0]->GetNode()->GetName().c_str(), "GainSelector");
    EXPECT_FALSE(as<ISelector>("Gain")->IsSelector());

    // Each selector value addresses its own register.
    enumeration("GainSelector")->FromString("Red");
    floating("Gain")->SetValue(3.0);
    enumeration("GainSelector")->FromString("Blue");
    floating("Gain")->SetValue(6.0);
    EXPECT_EQ(camera().peekRegister(R::GainRaw + 4), 300u);
    EXPECT_EQ(camera().peekRegister(R::GainRaw + 12), 600u);
    enumeration("GainSelector")->FromString("Red");
    EXPECT_DOUBLE_EQ(floating("Gain")->GetValue(), 3.0);

    enumeration("TriggerSelector")->FromString("AcquisitionStart");
    enumeration("TriggerMode")->FromString("On");
    EXPECT_EQ(camera().peekRegister(R::TriggerMode + 4), 1u);
    EXPECT_EQ(camera().peekRegister(R::TriggerMode), 0u);
}

TEST_F(SimulatedCameraTest, LimitsIncrementsAndDependentLimits) {
    IInteger* width = integer("Width");
    IInteger* offsetX = integer("OffsetX");
    EXPECT_EQ(width->GetMin(), 16);
    EXPECT_EQ(width->GetMax(), 2048);
    EXPECT_EQ(width->GetInc(), 16);
    EXPECT_EQ(width->GetIncMode(), fixedIncrement);
    EXPECT_EQ(width->GetListOfValidValues().size(), 0u);

    // Width's maximum shrinks as OffsetX grows.
    offsetX->SetValue(512);
    EXPECT_EQ(width->GetMax(), 2048 - 512);
    EXPECT_EQ(offsetX->GetMax(), 2048 - 640);

    // Imposed limits narrow the described ones.
    width->ImposeMax(1024);
    EXPECT_EQ(width->GetMax(), 1024);
    width->ImposeMin(64);
    EXPECT_EQ(width->GetMin(), 64);

    IFloat* frameRate = floating("AcquisitionFrameRate");
    EXPECT_TRUE(frameRate->HasInc());
    EXPECT_DOUBLE_EQ(frameRate->GetInc(), 0.5);
    EXPECT_EQ(frameRate->GetIncMode(), fixedIncrement);
    IFloat* exposure = floating("ExposureTime");
    EXPECT_FALSE(exposure->HasInc());
    EXPECT_EQ(exposure->GetIncMode(), noIncrement);
    EXPECT_DOUBLE_EQ(exposure->GetMin(), 10);
    EXPECT_DOUBLE_EQ(exposure->GetMax(), 1000000);
    exposure->ImposeMax(5000);
    EXPECT_DOUBLE_EQ(exposure->GetMax(), 5000);

    // A converter's limits come from its source through the formula.
    EXPECT_DOUBLE_EQ(floating("Gain")->GetMin(), 0.0);
    EXPECT_DOUBLE_EQ(floating("Gain")->GetMax(), 24.0);
    EXPECT_EQ(integer("BinningHorizontal")->GetMin(), 1);
    EXPECT_EQ(integer("BinningHorizontal")->GetMax(), 4);

    // A swiss knife without described limits spans the whole type.
    EXPECT_EQ(integer("PayloadSize")->GetMin(), INT64_MIN);
    EXPECT_EQ(integer("PayloadSize")->GetMax(), INT64_MAX);
    EXPECT_EQ(integer("PayloadSize")->GetInc(), 1);
}

TEST_F(SimulatedCameraTest, TextFormsFollowRepresentationAndDisplay) {
    EXPECT_STREQ(integer("TestHexInteger")->ToString().c_str(), "0xcafe");
    integer("TestHexInteger")->FromString("0x1F");
    EXPECT_EQ(camera().peekRegister(R::TestHexInteger), 0x1Fu);
    EXPECT_STREQ(integer("GevCurrentIPAddress")->ToString().c_str(), "192.168.1.42");
    integer("GevPersistentIPAddress")->FromString("10.0.0.7");
    EXPECT_EQ(camera().peekRegister(R::GevPersistentIPAddress), 0x0A000007u);
    EXPECT_STREQ(integer("GevMACAddress")->ToString().c_str(), "00:30:53:12:34:56");
    integer("Width")->FromString("800");
    EXPECT_STREQ(integer("Width")->ToString().c_str(), "800");

    // Floats: fixed with one digit, scientific with three, and the default form.
    floating("ExposureTime")->SetValue(1234.56);
    EXPECT_STREQ(floating("ExposureTime")->ToString().c_str(), "1234.6");
    EXPECT_EQ(floating("ExposureTime")->GetDisplayNotation(), fnFixed);
    EXPECT_EQ(floating("ExposureTime")->GetDisplayPrecision(), 1);
    EXPECT_STREQ(floating("TestScientificFloat")->ToString().c_str(), "1.235e+03");
    EXPECT_STREQ(floating("Gamma")->ToString().c_str(), "1");
    EXPECT_EQ(floating("Gamma")->GetDisplayPrecision(), 6);
    floating("ExposureTime")->FromString(" 20.25 ");
    EXPECT_DOUBLE_EQ(camera().peekDouble(R::ExposureTime), 20.25);
    // A rounded text never lies outside the limits.
    floating("ExposureTime")->ImposeMax(999999.96);
    floating("ExposureTime")->SetValue(999999.96);
    EXPECT_STREQ(floating("ExposureTime")->ToString().c_str(), "999999.96");

    // Booleans and enumerations.
    as<IBoolean>("ReverseX")->FromString("true");
    EXPECT_STREQ(as<IValue>("ReverseX")->ToString().c_str(), "1");
    as<IBoolean>("ReverseX")->FromString("0");
    EXPECT_STREQ(as<IValue>("ReverseX")->ToString().c_str(), "0");
    enumeration("AcquisitionMode")->FromString("SingleFrame");
    EXPECT_STREQ(enumeration("AcquisitionMode")->ToString().c_str(), "SingleFrame");

    // Registers show their bytes in hex.
    as<IValue>("TestRegister")->FromString("0x0102030405060708");
    EXPECT_STREQ(as<IValue>("TestRegister")->ToString().c_str(), "0x0102030405060708");
    EXPECT_EQ(camera().peekRegister(R::TestRegister), 0x04030201u);
}

TEST_F(SimulatedCameraTest, CommandsCompleteWhenTheDeviceClearsThem) {
    ICommand* latch = as<ICommand>("TimestampLatch");
    EXPECT_TRUE(latch->IsDone());
    latch->Execute();
    // The device stays busy for one read, then clears the command register.
    EXPECT_FALSE(latch->IsDone());
    EXPECT_TRUE(latch->IsDone());
    EXPECT_GT(integer("TimestampLatchValue")->GetValue(), 0);

    // A slower device: three polls see it busy, the fourth sees it done.
    camera().setBusyReads(3);
    (*as<ICommand>("TriggerSoftware"))();
    for (int poll = 0; poll < 3; ++poll)
        EXPECT_FALSE(as<ICommand>("TriggerSoftware")->IsDone()) << poll;
    EXPECT_TRUE(as<ICommand>("TriggerSoftware")->IsDone());

    // A command whose register cannot be read counts as done at once.
    as<ICommand>("AcquisitionStart")->Execute();
    EXPECT_TRUE(camera().isAcquiring());
    EXPECT_TRUE(as<ICommand>("AcquisitionStart")->IsDone());
    as<ICommand>("AcquisitionStop")->Execute();
    EXPECT_FALSE(camera().isAcquiring());
}

TEST_F(SimulatedCameraTest, FileAccessFeaturesDriveTheDeviceFiles) {
    enumeration("FileSelector")->FromString("UserSet2");
    enumeration("FileOpenMode")->FromString("Write");
    enumeration("FileOperationSelector")->FromString("Open");
    as<ICommand>("FileOperationExecute")->Execute();
    EXPECT_STREQ(enumeration("FileOperationStatus")->ToString().c_str(), "Success");

    const char text[] = "hello device";
    uint8_t buffer[256] = {};
    std::memcpy(buffer, text, sizeof(text) - 1);
    as<IRegister>("FileAccessBuffer")->Set(buffer, 256);
    integer("FileAccessOffset")->SetValue(0);
    integer("FileAccessLength")->SetValue(sizeof(text) - 1);
    enumeration("FileOperationSelector")->FromString("Write");
    as<ICommand>("FileOperationExecute")->Execute();
    EXPECT_TRUE(as<ICommand>("FileOperationExecute")->IsDone());
    EXPECT_EQ(integer("FileOperationResult")->GetValue(), 12);
    enumeration("FileOperationSelector")->FromString("Close");
    as<ICommand>("FileOperationExecute")->Execute();
    EXPECT_EQ(camera().fileContent(SimCamera::CSimulatedFiles::UserSet2), "hello device");
    EXPECT_EQ(integer("FileSize")->GetValue(), 12);

    // The description offers no writing mode for the read-only log, and the device itself refuses one
    // that is forced past the description.
    enumeration("FileSelector")->FromString("DeviceLog");
    EXPECT_EQ(node("EnumEntry_FileOpenMode_Write")->GetAccessMode(), NA);
    EXPECT_THROW(enumeration("FileOpenMode")->FromString("Write"), GenICam::AccessException);
    integer("FileOpenModeReg")->SetValue(1);
    enumeration("FileOperationSelector")->FromString("Open");
    as<ICommand>("FileOperationExecute")->Execute();
    EXPECT_STREQ(enumeration("FileOperationStatus")->ToString().c_str(), "Failure");

    // The firmware file is listed but cannot be selected.
    EXPECT_EQ(node("EnumEntry_FileSelector_Firmware")->GetAccessMode(), NA);
}
