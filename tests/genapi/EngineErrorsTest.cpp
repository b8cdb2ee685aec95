// Every failure leaves the engine as the GenICam exception GenApi uses, with GenApi's bare description
// and the node named in the full message.
#include "MemoryDescriptions.h"
#include "SimulatedCameraFixture.h"
#include <new>
#include <stdexcept>

using namespace GenApi;
using GenICam::gcstring;

TEST_F(SimulatedCameraTest, OutOfRangeValuesAreRefusedBeforeTheDevice) {
    const uint32_t before = camera().peekRegister(SimCamera::Registers::Width);
    std::string text = descriptionOf<GenICam::OutOfRangeException>([&] { integer("Width")->SetValue(4096); });
    EXPECT_EQ(text, "Value = 4096 must be equal or smaller than Max = 2048.");
    text = descriptionOf<GenICam::OutOfRangeException>([&] { integer("Width")->SetValue(8); });
    EXPECT_EQ(text, "Value = 8 must be equal or greater than Min = 16.");
    text = descriptionOf<GenICam::OutOfRangeException>([&] { integer("Width")->SetValue(100); });
    EXPECT_EQ(text,
              "The difference between Value = 100 and Min = 16 must be dividable without rest by Inc = 16.");
    EXPECT_EQ(camera().peekRegister(SimCamera::Registers::Width), before);

    text =
        descriptionOf<GenICam::OutOfRangeException>([&] { floating("ExposureTime")->SetValue(5.0); }, true);
    EXPECT_NE(text.find("in node 'ExposureTime' while calling 'ExposureTime.SetValue()'"), std::string::npos);
    EXPECT_NE(text.find("must be greater than or equal"), std::string::npos);
    EXPECT_THROW(floating("Gain")->SetValue(30.0), GenICam::OutOfRangeException);
    EXPECT_THROW(integer("TestIntegerStep10")->SetValue(15), GenICam::OutOfRangeException);
    // Range checks stay on without verification; only the access check goes.
    EXPECT_THROW(integer("Width")->SetValue(4096, false), GenICam::OutOfRangeException);
}

TEST_F(SimulatedCameraTest, AccessViolationsRaiseAccessExceptions) {
    std::string text =
        descriptionOf<GenICam::AccessException>([&] { integer("TestReadOnlyInteger")->SetValue(1); });
    EXPECT_EQ(text, "Node is not writable.");
    text = descriptionOf<GenICam::AccessException>([&] { integer("TestWriteOnlyInteger")->GetValue(); });
    EXPECT_EQ(text, "Node is not readable.");
    EXPECT_THROW(as<IBoolean>("TestWriteOnlyBoolean")->GetValue(), GenICam::AccessException);
    EXPECT_THROW(as<IString>("DeviceVendorName")->SetValue("x"), GenICam::AccessException);
    EXPECT_THROW(as<ICommand>("DeviceReset")->ToString(), GenICam::AccessException);
    EXPECT_THROW(as<IValue>("Root")->FromString("x"), GenICam::AccessException);
    // A feature that is not available refuses reads and limit queries alike.
    EXPECT_THROW(integer("AcquisitionFrameCount")->GetValue(), GenICam::AccessException);
    text = descriptionOf<GenICam::AccessException>([&] { integer("AcquisitionFrameCount")->GetMin(); });
    EXPECT_EQ(text, "Node is not available.");
    // Write-only values are written all the same.
    integer("TestWriteOnlyInteger")->SetValue(-7);
    EXPECT_EQ(static_cast<int32_t>(camera().peekRegister(SimCamera::Registers::TestWriteOnlyInteger)), -7);
}

TEST_F(SimulatedCameraTest, UnknownEntriesAndUnparsableTextsAreInvalidArguments) {
    std::string text = descriptionOf<GenICam::InvalidArgumentException>(
        [&] { enumeration("PixelFormat")->FromString("Mono99"); });
    EXPECT_EQ(text, "Feature 'PixelFormat' : cannot convert value 'Mono99', the value is invalid.");
    text = descriptionOf<GenICam::InvalidArgumentException>([&] { integer("Width")->FromString("wide"); });
    EXPECT_EQ(text, "Node 'Width' : cannot convert string 'wide' to int.");
    EXPECT_THROW(floating("ExposureTime")->FromString("12ms"), GenICam::InvalidArgumentException);
    EXPECT_THROW(as<IValue>("ReverseX")->FromString("maybe"), GenICam::InvalidArgumentException);
    EXPECT_THROW(as<IValue>("TestRegister")->FromString("0xZZ"), GenICam::InvalidArgumentException);
    EXPECT_THROW(as<IRegister>("TestRegister")->Set(nullptr, 8), GenICam::InvalidArgumentException);
    EXPECT_THROW(as<IString>("DeviceUserID")->SetValue("a string far longer than sixteen bytes"),
                 GenICam::OutOfRangeException);

    // Entries that exist but cannot be chosen, and values no entry has.
    EXPECT_THROW(enumeration("PixelFormat")->FromString("Mono10"), GenICam::AccessException);
    EXPECT_THROW(enumeration("PixelFormat")->FromString("RGB8"), GenICam::AccessException);
    EXPECT_THROW(enumeration("PixelFormat")->SetIntValue(12345), GenICam::OutOfRangeException);
    // A device value that matches no entry cannot be converted to text.
    camera().pokeRegister(SimCamera::Registers::PixelFormat, 77);
    text = descriptionOf<GenICam::InvalidArgumentException>([&] { enumeration("PixelFormat")->ToString(); });
    EXPECT_EQ(text, "Feature 'PixelFormat' : cannot convert value '77', the value is invalid.");
}

TEST_F(SimulatedCameraTest, WrongInterfacesGiveInvalidPointersAndLogicalErrors) {
    CFloatPtr notAFloat = map()->GetNode("Width");
    EXPECT_FALSE(notAFloat.IsValid());
    EXPECT_FALSE(IsReadable(notAFloat));
    const std::string text = descriptionOf<GenICam::LogicalErrorException>([&] { notAFloat->GetValue(); });
    EXPECT_EQ(text, "NULL pointer dereferenced");
    CIntegerPtr missing = map()->GetNode("NoSuchNode");
    EXPECT_FALSE(missing);
    EXPECT_TRUE(missing == 0);
    EXPECT_THROW(missing == 1, GenICam::LogicalErrorException);
    CIntegerPtr width = map()->GetNode("Width");
    EXPECT_TRUE(width.IsValid());
    EXPECT_EQ(static_cast<IInteger*>(width), integer("Width"));
}

TEST_F(SimulatedCameraTest, PortFailuresKeepTheirTypeAndNameTheNode) {
    camera().setFailure(SimCamera::CSimulatedCamera::EFailure::IoError);
    // The port's own description passes through; the full message names the register that read.
    std::string text = descriptionOf<GenICam::RuntimeException>([&] { integer("Width")->GetValue(); });
    EXPECT_EQ(text, "SimulatedCamera: transfer failed");
    text = descriptionOf<GenICam::RuntimeException>([&] { integer("Width")->GetValue(); }, true);
    EXPECT_NE(text.find("in node 'WidthReg' while calling 'WidthReg.GetValue()'"), std::string::npos);
    EXPECT_THROW(floating("ExposureTime")->SetValue(100.0), GenICam::RuntimeException);

    camera().setFailure(SimCamera::CSimulatedCamera::EFailure::Timeout);
    text = descriptionOf<GenICam::TimeoutException>([&] { integer("Height")->GetValue(); });
    EXPECT_EQ(text, "SimulatedCamera: the device did not answer in time");
    uint32_t value;
    EXPECT_THROW(as<IPort>("Device")->Read(&value, 0, 4), GenICam::TimeoutException);

    camera().setFailure(SimCamera::CSimulatedCamera::EFailure::None);
    EXPECT_EQ(integer("Width")->GetValue(), 640);
    // Reads outside the register space fail on the port.
    EXPECT_THROW(as<IPort>("Device")->Read(&value, 0x10000, 4), GenICam::RuntimeException);
    EXPECT_THROW(as<IPort>("Device")->Read(&value, 0, -1), GenICam::InvalidArgumentException);
}

TEST_F(SimulatedCameraTest, DescriptionsThatAreNoXmlDoNotLoad) {
    CNodeMapRef broken;
    EXPECT_THROW(broken._LoadXMLFromString("<RegisterDescription><Integer Name="), GenICam::RuntimeException);
    EXPECT_THROW(broken._LoadXMLFromString(""), GenICam::InvalidArgumentException);
    EXPECT_THROW(broken._LoadXMLFromFile("/nonexistent/camera.xml"), GenICam::RuntimeException);
    EXPECT_THROW(broken._GetNode("Width"), GenICam::AccessException);
    CNodeMapRef loaded;
    const std::string& xml = SimCamera::CSimulatedCamera::description();
    loaded._LoadXMLFromString(gcstring(xml.c_str(), xml.size()));
    EXPECT_THROW(loaded._LoadXMLFromString(gcstring(xml.c_str(), xml.size())), GenICam::RuntimeException);
    // Without a port nothing that needs the device can be read.
    EXPECT_EQ(loaded._GetNode("Width")->GetAccessMode(), NI);
    EXPECT_FALSE(loaded._Connect(&camera(), "NoSuchPort"));

    // An enumeration entry without a name (found by fuzzing) loads and is simply not listed by name.
    std::string nameless = xml;
    const std::string named = "<EnumEntry Name=\"Line0\"";
    nameless.replace(nameless.find(named), named.size(), "<EnumEntry Naee=\"Line0\"");
    CNodeMapRef tolerant;
    EXPECT_NO_THROW(tolerant._LoadXMLFromString(gcstring(nameless.c_str(), nameless.size())));

    // Bytes its declared encoding cannot convert (found by fuzzing): the exception says so, and libxml2
    // prints nothing of its own.
    const std::string misencoded =
        "<?xml version=\"1.0\" encoding=\"SHIFT_JIS\"?><RegisterDescription ModelName=\"M\" VendorName=\"V\" "
        "StandardNameSpace=\"None\" SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" "
        "SchemaSubMinorVersion=\"0\" MajorVersion=\"1\" MinorVersion=\"0\" SubMinorVersion=\"0\" "
        "ProductGuid=\"a\" VersionGuid=\"b\"><Port Name=\"Device\"/><Port Name=\"Other\"/>"
        "<Integer "
        "Name=\"A\"><ToolTip>\xef\xef\xef\xef</ToolTip><Value>1</Value></Integer></RegisterDescription>";
    testing::internal::CaptureStderr();
    CNodeMapRef quiet;
    EXPECT_THROW(quiet._LoadXMLFromString(misencoded.c_str()), GenICam::RuntimeException);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

// A string register whose length register holds garbage: the read fails as GenApi's string buffer does
// (std::length_error) or as an allocation that cannot be served (std::bad_alloc), and the process goes
// on; before, the buffer was allocated inside Aravis, which aborts on a failed allocation.
TEST(RegisterBuffers, AStringRegisterLongerThanMemoryFailsWithoutEndingTheProcess) {
    const std::string xml =
        "<RegisterDescription ModelName=\"M\" VendorName=\"V\" StandardNameSpace=\"None\" "
        "SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" MajorVersion=\"1\" "
        "MinorVersion=\"0\" SubMinorVersion=\"0\" ProductGuid=\"a\" VersionGuid=\"b\" "
        "xmlns=\"http://www.genicam.org/GenApi/Version_1_1\">"
        "<IntReg Name=\"Length\"><Address>0</Address><Length>8</Length><AccessMode>RW</AccessMode>"
        "<pPort>Device</pPort><Cachable>NoCache</Cachable><Sign>Unsigned</Sign><Endianess>LittleEndian</"
        "Endianess>"
        "</IntReg>"
        "<StringReg "
        "Name=\"Text\"><Address>0x100</Address><pLength>Length</pLength><AccessMode>RO</AccessMode>"
        "<pPort>Device</pPort><Cachable>NoCache</Cachable></StringReg>"
        "<Port Name=\"Device\"/></RegisterDescription>";
    SDescriptionInMemory described(xml, false);
    CIntegerPtr length = described.map._GetNode("Length");
    CStringPtr text = described.map._GetNode("Text");
    ASSERT_TRUE(length.IsValid() && text.IsValid());

    length->SetValue(8);
    EXPECT_EQ(text->GetValue(), "");

    // Longer than any string can be, on every platform: GenApi's own exception and text.
    length->SetValue((int64_t(1) << 62) + 1);
    try {
        text->GetValue();
        ADD_FAILURE() << "a string of 2^62 bytes was read";
    } catch (const std::length_error& e) {
        EXPECT_STREQ(e.what(), "basic_string::_S_create");
    }

    // A string may be that long on 64-bit, but no memory holds it.
    length->SetValue(int64_t(1) << 61);
    if (sizeof(void*) == 8)
        EXPECT_THROW(text->GetValue(), std::bad_alloc);
    else
        EXPECT_THROW(text->GetValue(), std::length_error);

    // Beyond a 32-bit string's reach (the reference's 32-bit build answers so for such lengths).
    if (sizeof(void*) == 4) {
        length->SetValue(int64_t(3474297413));
        EXPECT_THROW(text->GetValue(), std::length_error);
        EXPECT_THROW(text->GetMaxLength(), std::length_error);
    }

    // The map serves on as before.
    length->SetValue(4);
    EXPECT_EQ(text->GetValue(), "");
}
