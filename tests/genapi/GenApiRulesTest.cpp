// GenApi's rules where they differ from a plain evaluation of the description: value texts, access modes
// and visibilities derived from other nodes, caching modes without Cachable, formulas GenApi cannot
// evaluate, read cycles and schema checks.
#include "SimulatedCameraFixture.h"
#include <GenApiEngine/DescriptionSchema.h>
#include <cmath>
#include <cstring>
#include <limits>
#include <algorithm>
#include <map>

using namespace GenApi;
using GenICam::gcstring;

namespace {

// A register space of 32-bit little-endian words that a test fills; longer transfers span several words.
class CWordPort : public CPortImpl {
public:
    EAccessMode GetAccessMode() const override { return RW; }
    void Read(void* buffer, int64_t address, int64_t length) override {
        ++reads;
        uint8_t* bytes = static_cast<uint8_t*>(buffer);
        for (int64_t offset = 0; offset < length; offset += 4) {
            const uint32_t word = words[address + offset];
            std::memcpy(bytes + offset, &word, std::min<size_t>(4, static_cast<size_t>(length - offset)));
        }
    }
    void Write(const void* buffer, int64_t address, int64_t length) override {
        const uint8_t* bytes = static_cast<const uint8_t*>(buffer);
        for (int64_t offset = 0; offset < length; offset += 4) {
            uint32_t word = 0;
            std::memcpy(&word, bytes + offset, std::min<size_t>(4, static_cast<size_t>(length - offset)));
            words[address + offset] = word;
        }
    }
    std::map<int64_t, uint32_t> words;
    int reads = 0;
};

std::string description(const std::string& nodes) {
    return R"(<?xml version="1.0" encoding="utf-8"?>
<RegisterDescription xmlns="http://www.genicam.org/GenApi/Version_1_1" ModelName="Rules" VendorName="Test"
    StandardNameSpace="None" SchemaMajorVersion="1" SchemaMinorVersion="1" SchemaSubMinorVersion="0"
    MajorVersion="1" MinorVersion="0" SubMinorVersion="0" ProductGuid="11111111-2222-3333-4444-555555555555"
    VersionGuid="11111111-2222-3333-4444-666666666666">
)" + nodes +
           R"(
  <Port Name="Device"/>
</RegisterDescription>
)";
}

std::string intReg(const char* name, int address, const char* extra = "", int length = 4) {
    return std::string("<IntReg Name=\"") + name + "\"><Address>" + std::to_string(address) +
           "</Address><Length>" + std::to_string(length) +
           "</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>" + extra +
           "<Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>\n";
}

// A description of the given nodes loaded over a word port.
struct SWordMap {
    explicit SWordMap(const std::string& nodes) {
        map._LoadXMLFromString(description(nodes).c_str());
        map._Connect(&port, "Device");
    }
    // Puts words in the register space behind GenApi's back, then lets the map read them afresh.
    void load(std::initializer_list<std::pair<const int64_t, uint32_t>> words) {
        for (const auto& word : words)
            port.words[word.first] = word.second;
        map._InvalidateNodes();
    }
    CNodeMapRef map;
    CWordPort port;
};

const std::string rulesNodes =
    R"(<Category Name="Root"><pFeature>Visible</pFeature><pFeature>Hidden</pFeature><pFeature>Absent</pFeature></Category>
  <Category Name="Visible"><DisplayName>Visible Things</DisplayName><pFeature>Flag</pFeature><pFeature>Mode</pFeature></Category>
  <Category Name="Hidden"><Visibility>Beginner</Visibility><pFeature>Secret</pFeature></Category>
  <Category Name="Absent"><pFeature>Missing</pFeature></Category>
  <Boolean Name="Flag"><pValue>FlagReg</pValue><OnValue>3</OnValue><OffValue>2</OffValue></Boolean>
  <Enumeration Name="Mode">
    <EnumEntry Name="A"><Value>10</Value></EnumEntry>
    <EnumEntry Name="B"><pIsAvailable>Zero</pIsAvailable><Value>20</Value></EnumEntry>
    <pValue>ModeReg</pValue>
  </Enumeration>
  <Enumeration Name="Unavailable">
    <EnumEntry Name="A"><pIsAvailable>Zero</pIsAvailable><Value>1</Value></EnumEntry>
    <pValue>ModeReg</pValue>
  </Enumeration>
  <Integer Name="Secret"><Visibility>Invisible</Visibility><pValue>ValueReg</pValue></Integer>
  <Integer Name="Missing"><pIsImplemented>Zero</pIsImplemented><pValue>ValueReg</pValue></Integer>
  <Integer Name="Zero"><Value>0</Value></Integer>
  <Command Name="Start"><pValue>CommandReg</pValue><CommandValue>1</CommandValue></Command>
  <Float Name="Ratio"><pValue>RatioKnife</pValue><Min>0</Min><Max>1</Max></Float>
  <SwissKnife Name="RatioKnife"><pVariable Name="V">ValueReg</pVariable><Formula>V/1000</Formula></SwissKnife>
  <IntSwissKnife Name="Twice"><pVariable Name="R">RatioKnife</pVariable><Formula>2*R</Formula></IntSwissKnife>
  <Converter Name="Scaled"><FormulaTo>FROM*2</FormulaTo><FormulaFrom>TO/2</FormulaFrom><pValue>ValueReg</pValue><Slope>Increasing</Slope></Converter>
  <IntSwissKnife Name="ModeIsA"><pVariable Name="M">Mode</pVariable><Constant Name="K">10</Constant><Formula>M=K</Formula></IntSwissKnife>
  <Integer Name="GuardedByMode"><pIsAvailable>ModeIsA</pIsAvailable><pValue>ValueReg</pValue></Integer>
  <IntSwissKnife Name="ValueIsK"><pVariable Name="V">ValueReg</pVariable><Constant Name="K">10</Constant><Formula>V=K</Formula></IntSwissKnife>
)" + intReg("FlagReg", 0) +
    intReg("ModeReg", 4) + intReg("ValueReg", 8) + intReg("CommandReg", 12, "<Cachable>NoCache</Cachable>");

class GenApiRulesTest : public ::testing::Test {
protected:
    GenApiRulesTest() {
        m_Map._LoadXMLFromString(description(rulesNodes).c_str());
        m_Map._Connect(&m_Port, "Device");
    }
    template <typename T>
    T* node(const char* name) {
        T* typed = dynamic_cast<T*>(m_Map._GetNode(name));
        EXPECT_NE(typed, nullptr) << name;
        return typed;
    }
    void poke(int64_t address, uint32_t value) {
        m_Port.words[address] = value;
        m_Map._InvalidateNodes();
    }

    CWordPort m_Port;
    CNodeMapRef m_Map;
};

}  // namespace

TEST_F(GenApiRulesTest, ValueTextsOfEveryKindOfNode) {
    // A category shows its display name; an entry shows its value.
    EXPECT_STREQ(node<IValue>("Visible")->ToString().c_str(), "Visible Things");
    EXPECT_STREQ(node<IValue>("Hidden")->ToString().c_str(), "Hidden");
    EXPECT_STREQ(node<IValue>("EnumEntry_Mode_B")->ToString().c_str(), "20");

    // A boolean must hold its on or its off value.
    poke(0, 3);
    EXPECT_TRUE(node<IBoolean>("Flag")->GetValue());
    poke(0, 2);
    EXPECT_STREQ(node<IValue>("Flag")->ToString().c_str(), "0");
    poke(0, 7);
    EXPECT_EQ(descriptionOf<GenICam::LogicalErrorException>([&] { node<IBoolean>("Flag")->GetValue(); }),
              "Value '7' is neither true (3) nor false (2)");

    // An enumeration value without an entry cannot be converted.
    poke(4, 10);
    EXPECT_STREQ(node<IValue>("Mode")->ToString().c_str(), "A");
    poke(4, 11);
    EXPECT_THROW(node<IValue>("Mode")->ToString(), GenICam::InvalidArgumentException);
    EXPECT_EQ(node<IEnumeration>("Mode")->GetIntValue(), 11);

    // A command's text is "1" from Execute until it is done, "0" otherwise: a register that holds the
    // command value without an Execute still reads "0", while IsDone tells it is not done.
    poke(12, 0);
    EXPECT_STREQ(node<IValue>("Start")->ToString().c_str(), "0");
    EXPECT_TRUE(node<ICommand>("Start")->IsDone());
    poke(12, 1);
    EXPECT_STREQ(node<IValue>("Start")->ToString().c_str(), "0");
    EXPECT_FALSE(node<ICommand>("Start")->IsDone());
    poke(12, 0);
    node<ICommand>("Start")->Execute();
    EXPECT_STREQ(node<IValue>("Start")->ToString().c_str(), "1");
    EXPECT_STREQ(node<IValue>("Start")->ToString().c_str(), "1");
    poke(12, 0);
    EXPECT_STREQ(node<IValue>("Start")->ToString().c_str(), "0");
    EXPECT_TRUE(node<ICommand>("Start")->IsDone());
    poke(12, 1);
    EXPECT_STREQ(node<IValue>("Start")->ToString().c_str(), "0");

    // Floats keep the display precision; a value outside the limits is printed half a unit of its last
    // decimal nearer to them.
    poke(8, 123456);
    EXPECT_STREQ(node<IValue>("Ratio")->ToString().c_str(), "123.456");
    poke(8, 1234567);
    EXPECT_STREQ(node<IValue>("Ratio")->ToString().c_str(), "1234.56");
}

TEST_F(GenApiRulesTest, AccessModesAndVisibilitiesDerivedFromOtherNodes) {
    // No implemented entry: not implemented; no available entry: not available.
    EXPECT_EQ(node<INode>("Mode")->GetAccessMode(), RW);
    EXPECT_EQ(node<INode>("Unavailable")->GetAccessMode(), NA);
    EXPECT_EQ(node<INode>("EnumEntry_Unavailable_A")->GetAccessMode(), NA);
    // A category whose features are all not implemented is not implemented.
    EXPECT_EQ(node<INode>("Absent")->GetAccessMode(), NI);
    EXPECT_EQ(node<INode>("Visible")->GetAccessMode(), RO);
    // A category is as visible as its most visible feature, whatever visibility it states itself.
    EXPECT_EQ(node<INode>("Hidden")->GetVisibility(), Invisible);
    EXPECT_EQ(node<INode>("Visible")->GetVisibility(), Beginner);
    EXPECT_EQ(node<INode>("Root")->GetVisibility(), Beginner);
}

TEST_F(GenApiRulesTest, CachingModesWithoutCachable) {
    EXPECT_EQ(node<INode>("ValueReg")->GetCachingMode(), WriteThrough);
    EXPECT_EQ(node<INode>("CommandReg")->GetCachingMode(), NoCache);
    // Float formulas and converters default to WriteAround, and so does what reads them.
    EXPECT_EQ(node<INode>("RatioKnife")->GetCachingMode(), WriteAround);
    EXPECT_EQ(node<INode>("Ratio")->GetCachingMode(), WriteAround);
    EXPECT_EQ(node<INode>("Scaled")->GetCachingMode(), WriteAround);
    // Integer formulas pass on NoCache only.
    EXPECT_EQ(node<INode>("Twice")->GetCachingMode(), WriteThrough);
    EXPECT_EQ(node<INode>("Start")->GetCachingMode(), NoCache);
    EXPECT_EQ(node<INode>("Flag")->GetCachingMode(), WriteThrough);
}

TEST_F(GenApiRulesTest, FormulasGenApiCannotEvaluate) {
    // Constants beside an enumeration variable fail, and so does everything computed from them.
    poke(4, 10);
    EXPECT_THROW(node<IInteger>("ModeIsA")->GetValue(), GenICam::LogicalErrorException);
    EXPECT_THROW(node<INode>("GuardedByMode")->GetAccessMode(), GenICam::LogicalErrorException);
    // Constants beside integer variables are fine.
    poke(8, 10);
    EXPECT_EQ(node<IInteger>("ValueIsK")->GetValue(), 1);
}

TEST(DescriptionChecks, ReadCyclesAreRefusedWithGenApisMessage) {
    const std::string cyclic = description(
        R"(<Integer Name="Width"><pValue>WidthReg</pValue><pMax>WidthMax</pMax></Integer>
  <IntSwissKnife Name="WidthMax"><pVariable Name="OX">OffsetX</pVariable><Formula>100-OX</Formula></IntSwissKnife>
  <Integer Name="OffsetX"><pValue>OffsetReg</pValue><pMax>OffsetXMax</pMax></Integer>
  <IntSwissKnife Name="OffsetXMax"><pVariable Name="W">Width</pVariable><Formula>100-W</Formula></IntSwissKnife>
)" + intReg("WidthReg", 0) +
        intReg("OffsetReg", 4));
    CNodeMapRef map;
    EXPECT_EQ(descriptionOf<GenICam::RuntimeException>([&] { map._LoadXMLFromString(cyclic.c_str()); }),
              "read cycle detected : Width -> WidthMax -> OffsetX -> OffsetXMax -> Width");

    // Two nodes reading the same register, and a node selected by its own selector's value, are no cycle.
    const std::string acyclic = description(R"(<Integer Name="A"><pValue>R</pValue><pMax>B</pMax></Integer>
  <Integer Name="B"><pValue>R</pValue></Integer>
)" + intReg("R", 0));
    EXPECT_NO_THROW(CNodeMapRef()._LoadXMLFromString(acyclic.c_str()));
}

TEST(DescriptionChecks, SchemaViolationsAreReportedWithTheirLines) {
    EXPECT_TRUE(GenApiEngine::validateDescription(SimCamera::CSimulatedCamera::description()).empty());

    // ImposedAccessMode after Value is out of the schema's order; the model name breaks its pattern.
    std::string invalid = description(R"(<Integer Name="Late">
    <Value>1</Value>
    <ImposedAccessMode>RO</ImposedAccessMode>
  </Integer>)");
    invalid.replace(invalid.find("ModelName=\"Rules\""), 17, "ModelName=\"Bad-Name\"");
    const std::vector<GenApiEngine::SSchemaViolation> violations = GenApiEngine::validateDescription(invalid);
    ASSERT_EQ(violations.size(), 2u);
    EXPECT_EQ(violations[0].line, 5);
    EXPECT_NE(violations[0].message.find("ModelName"), std::string::npos);
    EXPECT_EQ(violations[1].line, 8);
    EXPECT_NE(violations[1].message.find("ImposedAccessMode"), std::string::npos);
    // Loading stays lenient: the same description loads.
    EXPECT_NO_THROW(CNodeMapRef()._LoadXMLFromString(invalid.c_str()));

    EXPECT_THROW(GenApiEngine::validateDescription("<not xml"), GenICam::RuntimeException);
    std::string unknownVersion = invalid;
    unknownVersion.replace(unknownVersion.find("SchemaMinorVersion=\"1\""), 22, "SchemaMinorVersion=\"7\"");
    EXPECT_THROW(GenApiEngine::validateDescription(unknownVersion), GenICam::RuntimeException);
}

TEST(PortRouting, EveryPortIsServedByTheUserPortConnectedToIt) {
    // Registers at the same address behind three ports, one of them a chunk port.
    std::string xml = description(R"(<Integer Name="Main"><pValue>MainReg</pValue></Integer>
  <Integer Name="Chunk"><pValue>ChunkReg</pValue></Integer>
  <Integer Name="Extra"><pValue>ExtraReg</pValue></Integer>
  <IntReg Name="MainReg"><Address>0x10</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>
  <IntReg Name="ChunkReg"><Address>0x10</Address><Length>4</Length><AccessMode>RO</AccessMode><pPort>ChunkPort</pPort><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>
  <IntReg Name="ExtraReg"><Address>0x10</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>ExtraPort</pPort><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>
  <Port Name="ChunkPort"><ChunkID>1234</ChunkID></Port>
  <Port Name="ExtraPort"/>)");
    CNodeMapRef map;
    map._LoadXMLFromString(xml.c_str());
    CWordPort device;
    CWordPort chunk;
    device.words[0x10] = 1;
    chunk.words[0x10] = 2;
    ASSERT_TRUE(map._Connect(&device, "Device"));
    ASSERT_TRUE(map._Connect(&chunk, "ChunkPort"));

    EXPECT_EQ(CIntegerPtr(map._GetNode("Main"))->GetValue(), 1);
    EXPECT_EQ(CIntegerPtr(map._GetNode("Chunk"))->GetValue(), 2);
    EXPECT_EQ(CRegisterPtr(map._GetNode("ChunkReg"))->GetAddress(), 0x10);
    // A port nobody connected is not implemented, and nothing reaches another port in its place.
    EXPECT_EQ(map._GetNode("Extra")->GetAccessMode(), NI);
    CWordPort extra;
    ASSERT_TRUE(map._Connect(&extra, "ExtraPort"));
    CIntegerPtr(map._GetNode("Extra"))->SetValue(7);
    EXPECT_EQ(extra.words[0x10], 7u);
    EXPECT_EQ(device.words[0x10], 1u);
    EXPECT_EQ(chunk.words[0x10], 2u);
}

TEST(PortRouting, ManyPortsAndBaseAddressesComputedAtRunTime) {
    // A main port whose registers sit above a 48-bit base an Integer holds, and twenty event ports.
    std::string nodes = R"(<Integer Name="Base"><Value>0xFFFFF0F00000</Value></Integer>
  <Integer Name="Main"><pValue>MainReg</pValue></Integer>
  <IntReg Name="MainReg"><Address>0x1A74</Address><pAddress>Base</pAddress><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>)";
    constexpr int eventPorts = 20;
    for (int i = 1; i <= eventPorts; ++i) {
        const std::string n = std::to_string(i);
        nodes += "<IntReg Name=\"Event" + n +
                 "\"><Address>0x4</Address><Length>4</Length><AccessMode>RO</AccessMode>"
                 "<pPort>Port" +
                 n +
                 "</pPort><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>"
                 "<Port Name=\"Port" +
                 n + "\"><EventID>" + std::to_string(0x9C40 + i) + "</EventID></Port>";
    }
    CNodeMapRef map;
    map._LoadXMLFromString(description(nodes).c_str());
    CWordPort device;
    device.words[0xFFFFF0F01A74] = 42;
    ASSERT_TRUE(map._Connect(&device, "Device"));
    std::vector<std::unique_ptr<CWordPort>> events;
    for (int i = 1; i <= eventPorts; ++i) {
        events.push_back(std::make_unique<CWordPort>());
        events.back()->words[0x4] = static_cast<uint32_t>(100 + i);
        ASSERT_TRUE(map._Connect(events.back().get(), ("Port" + std::to_string(i)).c_str()));
    }

    EXPECT_EQ(CIntegerPtr(map._GetNode("Main"))->GetValue(), 42);
    EXPECT_EQ(CRegisterPtr(map._GetNode("MainReg"))->GetAddress(), 0xFFFFF0F01A74);
    for (int i = 1; i <= eventPorts; ++i)
        EXPECT_EQ(CIntegerPtr(map._GetNode(("Event" + std::to_string(i)).c_str()))->GetValue(), 100 + i) << i;
    CIntegerPtr(map._GetNode("Main"))->SetValue(43);
    EXPECT_EQ(device.words[0xFFFFF0F01A74], 43u);
}

TEST(FormulaRules, IntegerConvertersKeep64BitsAndInfiniteFloatsFail) {
    SWordMap words(
        R"(<IntConverter Name="Wide"><FormulaTo>FROM</FormulaTo><FormulaFrom>TO + 1</FormulaFrom><pValue>WideReg</pValue><Slope>Increasing</Slope></IntConverter>
  <Enumeration Name="Picked"><EnumEntry Name="Big"><Value>4611686018427387905</Value></EnumEntry><pValue>Wide</pValue></Enumeration>
  <SwissKnife Name="Ratio"><pVariable Name="A">Numerator</pVariable><pVariable Name="B">Denominator</pVariable><Formula>A/B</Formula></SwissKnife>
  <SwissKnife Name="Shrunk"><pVariable Name="A">Numerator</pVariable><pVariable Name="B">Denominator</pVariable><Formula>A/(2**(1/B))</Formula></SwissKnife>
  <Float Name="Limited"><pValue>Ratio</pValue><pMin>Ratio</pMin><Max>10</Max></Float>
  <Integer Name="Numerator"><Value>3</Value></Integer>
  <Integer Name="Denominator"><Value>0</Value></Integer>
  <IntReg Name="WideReg"><Address>0</Address><Length>8</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Sign>Signed</Sign><Endianess>LittleEndian</Endianess></IntReg>)");
    CNodeMapRef& map = words.map;
    // 2^62: a double cannot hold 2^62 + 1.
    words.load({{0, 0}, {4, 0x40000000}});
    EXPECT_EQ(CIntegerPtr(map._GetNode("Wide"))->GetValue(), (int64_t(1) << 62) + 1);
    EXPECT_STREQ(CEnumerationPtr(map._GetNode("Picked"))->ToString().c_str(), "Big");

    // 3/0 is infinite: the formula fails, and so do the features reading it as value or limit.
    EXPECT_EQ(
        descriptionOf<GenICam::LogicalErrorException>([&] { CFloatPtr(map._GetNode("Ratio"))->GetValue(); }),
        "Ratio : Failed to evaluate formula 'A/B' : error message is '#Infinity somewhere!'");
    EXPECT_THROW(CFloatPtr(map._GetNode("Limited"))->GetValue(), GenICam::LogicalErrorException);
    EXPECT_THROW(CFloatPtr(map._GetNode("Limited"))->GetMin(), GenICam::LogicalErrorException);
    // Only the result counts: 3 / 2**(1/0) is 3 / infinity, which is 0.
    EXPECT_EQ(CFloatPtr(map._GetNode("Shrunk"))->GetValue(), 0.0);
    CIntegerPtr(map._GetNode("Denominator"))->SetValue(4);
    EXPECT_DOUBLE_EQ(CFloatPtr(map._GetNode("Ratio"))->GetValue(), 0.75);
    EXPECT_DOUBLE_EQ(CFloatPtr(map._GetNode("Limited"))->GetMin(), 0.75);
}

// A converter without limits of its own takes FormulaFrom at the limits of its pValue, in the order its
// slope gives; a formula that fails there fails the limit with GenApi's exception.
TEST(FormulaRules, ConverterLimitsFollowTheSlope) {
    SWordMap words(
        R"(<Integer Name="Raw"><Value>5</Value><Min>2</Min><Max>10</Max></Integer>
  <Integer Name="Zero"><Value>0</Value></Integer>
  <Converter Name="Falling"><FormulaTo>100-FROM</FormulaTo><FormulaFrom>100-TO</FormulaFrom><pValue>Raw</pValue><Slope>Decreasing</Slope></Converter>
  <Converter Name="Guessed"><FormulaTo>FROM*2</FormulaTo><FormulaFrom>TO/2</FormulaFrom><pValue>Raw</pValue></Converter>
  <Converter Name="Broken"><pVariable Name="Z">Zero</pVariable><FormulaTo>FROM*Z</FormulaTo><FormulaFrom>TO/Z</FormulaFrom><pValue>Raw</pValue><Slope>Increasing</Slope></Converter>
  <IntConverter Name="Twice"><FormulaTo>FROM/2</FormulaTo><FormulaFrom>TO*2</FormulaFrom><pValue>Raw</pValue><Slope>Increasing</Slope></IntConverter>
  <IntConverter Name="Folded"><FormulaTo>FROM</FormulaTo><FormulaFrom>TO%4</FormulaFrom><pValue>Raw</pValue><Slope>Varying</Slope></IntConverter>
  <Converter Name="Wavy"><FormulaTo>FROM</FormulaTo><FormulaFrom>TO%4</FormulaFrom><pValue>Raw</pValue><Slope>Varying</Slope></Converter>
  <Integer Name="Steps"><Value>6</Value><Min>0</Min><Max>60</Max><Inc>3</Inc><Representation>Linear</Representation><Unit>mm</Unit></Integer>
  <Float Name="Length"><pValue>Steps</pValue></Float>
  <Converter Name="Scaled"><FormulaTo>FROM*2</FormulaTo><FormulaFrom>TO/2</FormulaFrom><pValue>Steps</pValue><Slope>Increasing</Slope></Converter>
  <Integer Name="OverFolded"><pValue>Folded</pValue></Integer>
  <Float Name="OverWavy"><pValue>Wavy</pValue></Float>
  <Float Name="OverFalling"><pValue>Falling</pValue></Float>)");
    CNodeMapRef& map = words.map;
    CFloatPtr falling(map._GetNode("Falling"));
    EXPECT_DOUBLE_EQ(falling->GetMin(), 90.0);
    EXPECT_DOUBLE_EQ(falling->GetMax(), 98.0);
    EXPECT_DOUBLE_EQ(falling->GetValue(), 95.0);
    CFloatPtr guessed(map._GetNode("Guessed"));
    EXPECT_DOUBLE_EQ(guessed->GetMin(), 1.0);
    EXPECT_DOUBLE_EQ(guessed->GetMax(), 5.0);
    // GenApi names the converter's formula node that failed.
    EXPECT_EQ(
        descriptionOf<GenICam::LogicalErrorException>([&] { CFloatPtr(map._GetNode("Broken"))->GetMin(); }),
        "Broken_ConvertFrom : Failed to evaluate formula 'TO/Z' : error message is '#Infinity somewhere!'");
    EXPECT_THROW(CFloatPtr(map._GetNode("Broken"))->GetMax(), GenICam::LogicalErrorException);
    // An integer converter that rises and falls has the widest limits.
    CIntegerPtr twice(map._GetNode("Twice"));
    EXPECT_EQ(twice->GetMin(), 4);
    EXPECT_EQ(twice->GetMax(), 20);
    CIntegerPtr folded(map._GetNode("Folded"));
    EXPECT_EQ(folded->GetMin(), INT64_MIN);
    EXPECT_EQ(folded->GetMax(), INT64_MAX);
    EXPECT_EQ(folded->GetValue(), 1);
    // So does a float converter.
    CFloatPtr wavy(map._GetNode("Wavy"));
    EXPECT_EQ(wavy->GetMin(), -std::numeric_limits<double>::max());
    EXPECT_EQ(wavy->GetMax(), std::numeric_limits<double>::max());
    // A float over an integer steps, shows and measures as the integer does; a converter over it takes
    // its representation.
    CFloatPtr length(map._GetNode("Length"));
    ASSERT_TRUE(length->HasInc());
    EXPECT_DOUBLE_EQ(length->GetInc(), 3.0);
    EXPECT_EQ(length->GetRepresentation(), Linear);
    EXPECT_STREQ(length->GetUnit().c_str(), "mm");
    CFloatPtr scaled(map._GetNode("Scaled"));
    EXPECT_EQ(scaled->GetRepresentation(), Linear);
    EXPECT_FALSE(scaled->HasInc());
    // A value over a converter has the converter's limits.
    EXPECT_EQ(CIntegerPtr(map._GetNode("OverFolded"))->GetMax(), INT64_MAX);
    EXPECT_EQ(CFloatPtr(map._GetNode("OverWavy"))->GetMin(), -std::numeric_limits<double>::max());
    EXPECT_DOUBLE_EQ(CFloatPtr(map._GetNode("OverFalling"))->GetMax(), 98.0);
}

// A formula reads a boolean variable as 1 or 0, and follows it when it is written.
TEST(FormulaRules, BooleanVariablesReadAsOneOrZero) {
    SWordMap words(
        R"(<Boolean Name="Factory"><pValue>FactoryReg</pValue><OnValue>1</OnValue><OffValue>0</OffValue></Boolean>
  <IntSwissKnife Name="IsFactory"><pVariable Name="F">Factory</pVariable><Formula>F =1 </Formula></IntSwissKnife>
  <SwissKnife Name="Half"><pVariable Name="F">Factory</pVariable><Formula>F / 2</Formula></SwissKnife>)" +
        intReg("FactoryReg", 0x10));
    CNodeMapRef& map = words.map;
    words.port.words[0x10] = 1;
    CIntegerPtr isFactory = map._GetNode("IsFactory");
    EXPECT_EQ(isFactory->GetValue(), 1);
    EXPECT_DOUBLE_EQ(CFloatPtr(map._GetNode("Half"))->GetValue(), 0.5);
    CBooleanPtr(map._GetNode("Factory"))->SetValue(false);
    EXPECT_EQ(isFactory->GetValue(), 0);
}

// A variable may be named like a function: the formula reads the variable, and still calls the function.
TEST(FormulaRules, VariablesNamedLikeFunctionsAreVariables) {
    SWordMap words(R"(<Integer Name="Zero"><Value>0</Value></Integer>
  <IntSwissKnife Name="Unlocked"><pVariable Name="EXP">Zero</pVariable><Formula>( EXP = 1 ) ? 0 : 1</Formula></IntSwissKnife>
  <SwissKnife Name="Shifted"><pVariable Name="LN">Zero</pVariable><Formula>LN + EXP(0)</Formula></SwissKnife>)");
    EXPECT_EQ(CIntegerPtr(words.map._GetNode("Unlocked"))->GetValue(), 1);
    EXPECT_DOUBLE_EQ(CFloatPtr(words.map._GetNode("Shifted"))->GetValue(), 1.0);
    CIntegerPtr(words.map._GetNode("Zero"))->SetValue(1);
    EXPECT_EQ(CIntegerPtr(words.map._GetNode("Unlocked"))->GetValue(), 0);
}

// A formula reads an enumeration through its current entry: with a value no entry has, it fails with
// GenApi's "NULL pointer dereferenced", and so does the access of a node it guards.
TEST(FormulaRules, EnumerationVariablesWithoutACurrentEntryFail) {
    SWordMap words(
        R"(<Enumeration Name="Mode"><EnumEntry Name="Timed"><Value>1</Value></EnumEntry><pValue>ModeReg</pValue></Enumeration>
  <IntSwissKnife Name="IsTimed"><pVariable Name="M">Mode</pVariable><Formula>M=1</Formula></IntSwissKnife>
  <Integer Name="Guarded"><pIsAvailable>IsTimed</pIsAvailable><Value>5</Value></Integer>)" +
        intReg("ModeReg", 0x10));
    CNodeMapRef& map = words.map;
    words.port.words[0x10] = 7;
    CIntegerPtr isTimed = map._GetNode("IsTimed");
    EXPECT_THROW(isTimed->GetValue(), GenICam::LogicalErrorException);
    EXPECT_THROW(map._GetNode("Guarded")->GetAccessMode(), GenICam::LogicalErrorException);
    CEnumerationPtr(map._GetNode("Mode"))->SetIntValue(1);
    EXPECT_EQ(isTimed->GetValue(), 1);
    EXPECT_EQ(map._GetNode("Guarded")->GetAccessMode(), RW);
}

// GenApi's integer parser stops at a decimal point, and a float division by zero is an infinity even when
// the dividend is zero too, where a product of zero and infinity passes as not-a-number.
TEST(FormulaRules, IntegerFormulasRefuseFloatLiteralsAndDivisionsByZeroAreInfinite) {
    SWordMap words(
        R"(<Integer Name="Raw"><Value>8</Value></Integer>
  <Integer Name="Zero"><Value>0</Value></Integer>
  <Integer Name="Huge"><Value>2000</Value></Integer>
  <IntConverter Name="Quarter"><FormulaTo>FROM * 4.0</FormulaTo><FormulaFrom>TO / 4.25</FormulaFrom><pValue>Raw</pValue><Slope>Increasing</Slope></IntConverter>
  <IntSwissKnife Name="Half"><pVariable Name="R">Raw</pVariable><Formula>R / 2.0</Formula></IntSwissKnife>
  <IntSwissKnife Name="Whole"><pVariable Name="R2">Raw</pVariable><Formula>R2 / 2</Formula></IntSwissKnife>
  <SwissKnife Name="Undefined"><pVariable Name="Z">Zero</pVariable><Formula>Z / Z</Formula></SwissKnife>
  <SwissKnife Name="Product"><pVariable Name="Z">Zero</pVariable><pVariable Name="H">Huge</pVariable><Formula>Z * (2 ** H)</Formula></SwissKnife>)");
    CNodeMapRef& map = words.map;
    EXPECT_EQ(descriptionOf<GenICam::LogicalErrorException>(
                  [&] { CIntegerPtr(map._GetNode("Quarter"))->GetValue(); }),
              "Quarter_ConvertFrom : Failed to parse formula 'TO / 4.25' : error message is '# .25 - Unknown "
              "function/variable!'");
    EXPECT_EQ(
        descriptionOf<GenICam::LogicalErrorException>([&] { CIntegerPtr(map._GetNode("Half"))->GetValue(); }),
        "Half : Failed to parse formula 'R / 2.0' : error message is '# .0 - Unknown function/variable!'");
    // Digits inside a name are no literal.
    EXPECT_EQ(CIntegerPtr(map._GetNode("Whole"))->GetValue(), 4);
    EXPECT_EQ(descriptionOf<GenICam::LogicalErrorException>(
                  [&] { CFloatPtr(map._GetNode("Undefined"))->GetValue(); }),
              "Undefined : Failed to evaluate formula 'Z / Z' : error message is '#Infinity somewhere!'");
    EXPECT_TRUE(std::isnan(CFloatPtr(map._GetNode("Product"))->GetValue()));
}

// Registers that share bytes: a write through one drops what the cache keeps of every other it overlaps,
// whichever starts first, and leaves registers beside them alone.
TEST(RegisterCache, AWriteDropsEveryOverlappingRegister) {
    SWordMap words(intReg("Wide", 8, "", 8) + intReg("High", 12) + intReg("Low", 4, "", 8) +
                   intReg("Beside", 16));
    CNodeMapRef& map = words.map;
    CWordPort& port = words.port;
    words.load({{4, 1}, {8, 2}, {12, 3}, {16, 4}});
    CIntegerPtr wide(map._GetNode("Wide")), high(map._GetNode("High")), low(map._GetNode("Low"));
    CIntegerPtr beside(map._GetNode("Beside"));
    EXPECT_EQ(wide->GetValue(), (int64_t(3) << 32) | 2);
    EXPECT_EQ(low->GetValue(), (int64_t(2) << 32) | 1);
    EXPECT_EQ(beside->GetValue(), 4);
    high->SetValue(7);
    EXPECT_EQ(wide->GetValue(), (int64_t(7) << 32) | 2);
    wide->SetValue((int64_t(9) << 32) | 5);
    EXPECT_EQ(high->GetValue(), 9);
    EXPECT_EQ(low->GetValue(), (int64_t(5) << 32) | 1);
    port.words[16] = 6;  // behind GenApi's back: the register beside keeps its cached bytes
    EXPECT_EQ(beside->GetValue(), 4);
}

// A write makes every value it reaches compute again: values read through an index pattern, through a
// formula over the written register, or through a register whose address follows the written node. A
// register at a computed address is left alone by a write to another register it is not linked to, as in
// GenApi.
TEST(RegisterCache, KeptValuesFollowEveryWriteThatReachesThem) {
    SWordMap words(intReg("Fixed", 16) + intReg("Gain1", 36) + intReg("Beside", 40) +
                   R"(<Integer Name="Where"><Value>16</Value></Integer>
  <IntReg Name="Moving"><pAddress>Where</pAddress><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>
  <IntSwissKnife Name="Doubled"><pVariable Name="M">Moving</pVariable><Formula>2*M</Formula></IntSwissKnife>
  <IntSwissKnife Name="BesidePlusOne"><pVariable Name="B">Beside</pVariable><Formula>B+1</Formula></IntSwissKnife>
  <Integer Name="Selector"><Value>0</Value></Integer>
  <IntReg Name="Gains"><Address>32</Address><pIndex>Selector</pIndex><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>)");
    CNodeMapRef& map = words.map;
    CWordPort& port = words.port;
    words.load({{16, 3}, {20, 4}, {36, 5}, {40, 6}});
    CIntegerPtr fixed(map._GetNode("Fixed")), doubled(map._GetNode("Doubled")), where(map._GetNode("Where"));
    CIntegerPtr gains(map._GetNode("Gains")), gain1(map._GetNode("Gain1")),
        selector(map._GetNode("Selector"));
    CIntegerPtr besidePlusOne(map._GetNode("BesidePlusOne"));
    EXPECT_EQ(doubled->GetValue(), 6);
    selector->SetValue(1);
    EXPECT_EQ(gains->GetValue(), 5);
    EXPECT_EQ(besidePlusOne->GetValue(), 7);

    // Through a register found by its computed address: only a change of the address reads again.
    fixed->SetValue(8);
    EXPECT_EQ(doubled->GetValue(), 6);
    where->SetValue(20);
    EXPECT_EQ(doubled->GetValue(), 8);
    where->SetValue(16);
    EXPECT_EQ(doubled->GetValue(), 16);
    // Between an index pattern and the fixed register at one of its indices, both ways.
    gain1->SetValue(9);
    EXPECT_EQ(gains->GetValue(), 9);
    gains->SetValue(11);
    EXPECT_EQ(gain1->GetValue(), 11);
    // A formula over a register written through the port node itself.
    const uint32_t twelve = 12;
    CPortPtr(map._GetNode("Device"))->Write(&twelve, 40, 4);
    EXPECT_EQ(besidePlusOne->GetValue(), 13);
    // Bytes changed behind GenApi's back stay unseen until something invalidates them, as in GenApi.
    port.words[40] = 20;
    EXPECT_EQ(besidePlusOne->GetValue(), 13);
    map._GetNode("Beside")->InvalidateNode();
    EXPECT_EQ(besidePlusOne->GetValue(), 21);
}

// Integer registers are written at the address their description adds up, in their byte order, whether
// written themselves or through an integer whose pValue names them.
TEST(RegisterWrites, LandWhereAndAsTheDescriptionPlacesThem) {
    SWordMap words(R"(<Integer Name="Base"><Value>16</Value></Integer>
  <Integer Name="Index"><Value>2</Value></Integer>
  <IntReg Name="Short"><Address>4</Address><pAddress>Base</pAddress><Length>2</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>
  <Integer Name="ViaShort"><pValue>Short</pValue></Integer>
  <IntReg Name="Table"><Address>64</Address><pIndex Offset="8">Index</pIndex><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Sign>Signed</Sign><Endianess>LittleEndian</Endianess></IntReg>)");
    CNodeMapRef& map = words.map;
    CWordPort& port = words.port;
    CIntegerPtr(map._GetNode("ViaShort"))->SetValue(0x1234);
    EXPECT_EQ(port.words[20], 0x3412u);  // bytes 0x12 0x34 at address 20, read back as a little-endian word
    EXPECT_EQ(CIntegerPtr(map._GetNode("Short"))->GetValue(), 0x1234);
    CIntegerPtr(map._GetNode("Table"))->SetValue(-2);
    EXPECT_EQ(port.words[80], 0xFFFFFFFEu);
    EXPECT_EQ(CIntegerPtr(map._GetNode("Table"))->GetValue(), -2);
    CIntegerPtr(map._GetNode("Base"))->SetValue(32);
    CIntegerPtr(map._GetNode("Short"))->SetValue(0x00ff);
    EXPECT_EQ(port.words[36], 0xff00u);
    EXPECT_EQ(port.words[20], 0x3412u);
    // Another index reaches its own entry, untouched so far.
    CIntegerPtr(map._GetNode("Index"))->SetValue(3);
    EXPECT_EQ(CIntegerPtr(map._GetNode("Table"))->GetValue(), 0);
}

// Access modes as GenApi works them out where an evaluation fails: a category asks its features and a
// value its limits before their own conditions; an evaluation that an exception ended leaves RW behind
// when its access cannot be kept (an enumeration's read asks again), and is evaluated again at once when
// it can.
TEST(AccessRules, FailedEvaluationsLeaveRWBehindWhereTheAccessCannotBeKept) {
    // A formula that names a constant beside an enumeration cannot be evaluated ("NULL pointer
    // dereferenced" in GenApi); over a NoCache register its answer cannot be kept, over a cached one it can.
    auto failing = [](const std::string& prefix, const std::string& reg) {
        return "<Enumeration Name=\"" + prefix +
               "Method\"><EnumEntry Name=\"A\"><Value>1</Value></EnumEntry><pValue>" + reg +
               "</pValue></Enumeration><IntSwissKnife Name=\"" + prefix + "Broken\"><pVariable Name=\"M\">" +
               prefix +
               "Method</pVariable><Constant "
               "Name=\"K\">1</Constant><Formula>(M=K)?1:0</Formula></IntSwissKnife>\n";
    };
    SWordMap words(intReg("MethodReg", 0, "<Cachable>NoCache</Cachable>") + intReg("KeptMethodReg", 4) +
                   intReg("ChoiceReg", 8, "<Cachable>NoCache</Cachable>") + failing("", "MethodReg") +
                   failing("Kept", "KeptMethodReg") +
                   R"(<Integer Name="Off"><Value>0</Value></Integer>
  <Integer Name="Guarded"><pIsAvailable>Broken</pIsAvailable><Value>5</Value></Integer>
  <Integer Name="KeptGuarded"><pIsAvailable>KeptBroken</pIsAvailable><Value>5</Value></Integer>
  <Category Name="Group"><pIsImplemented>Off</pIsImplemented><pFeature>Guarded</pFeature></Category>
  <Category Name="KeptGroup"><pIsImplemented>Off</pIsImplemented><pFeature>KeptGuarded</pFeature></Category>
  <Enumeration Name="Choice"><pIsAvailable>Broken</pIsAvailable><EnumEntry Name="One"><Value>1</Value></EnumEntry><pValue>ChoiceReg</pValue></Enumeration>
  <Category Name="Choices"><pFeature>Choice</pFeature></Category>
  <Float Name="TimeMin"><pIsAvailable>Broken</pIsAvailable><Value>1</Value></Float>
  <Float Name="TimeMax"><pIsAvailable>Broken</pIsAvailable><Value>9</Value></Float>
  <Float Name="Time"><pIsAvailable>Broken</pIsAvailable><Value>2</Value><pMin>TimeMin</pMin><pMax>TimeMax</pMax></Float>
  <Integer Name="Counted"><pIsAvailable>Broken</pIsAvailable><Value>3</Value></Integer>
  <Integer Name="KeptCounted"><pIsAvailable>KeptBroken</pIsAvailable><Value>3</Value></Integer>
  <IntSwissKnife Name="Twice"><pVariable Name="C">Counted</pVariable><Formula>C*2</Formula></IntSwissKnife>
  <IntSwissKnife Name="KeptTwice"><pVariable Name="C">KeptCounted</pVariable><Formula>C*2</Formula></IntSwissKnife>)");
    CNodeMapRef& map = words.map;
    INode* guarded = map._GetNode("Guarded");
    INode* keptGuarded = map._GetNode("KeptGuarded");

    // The category fails through its feature, though its own condition says it is not implemented.
    ASSERT_THROW(map._GetNode("Group")->GetAccessMode(), GenICam::LogicalErrorException);
    // The feature answers RW from then on, and reads; asked again, the category hears RW from it and its
    // own condition decides.
    EXPECT_EQ(guarded->GetAccessMode(), RW);
    EXPECT_EQ(guarded->GetAccessMode(), RW);
    EXPECT_EQ(CIntegerPtr(guarded)->GetValue(), 5);
    EXPECT_EQ(map._GetNode("Group")->GetAccessMode(), NI);
    // Where the access can be kept, every question evaluates it again, and fails again.
    EXPECT_THROW(map._GetNode("KeptGroup")->GetAccessMode(), GenICam::LogicalErrorException);
    EXPECT_THROW(keptGuarded->GetAccessMode(), GenICam::LogicalErrorException);
    EXPECT_THROW(keptGuarded->GetAccessMode(), GenICam::LogicalErrorException);

    // An enumeration answers RW the same way, but its read asks again and fails.
    ASSERT_THROW(map._GetNode("Choices")->GetAccessMode(), GenICam::LogicalErrorException);
    CEnumerationPtr choice(map._GetNode("Choice"));
    EXPECT_EQ(choice->GetAccessMode(), RW);
    EXPECT_THROW(choice->ToString(), GenICam::LogicalErrorException);

    // A value asks its limits first: the failure comes from its minimum, which answers RW afterwards; its
    // maximum was never asked and fails in its own turn.
    EXPECT_THROW(map._GetNode("Time")->GetAccessMode(), GenICam::LogicalErrorException);
    EXPECT_EQ(map._GetNode("TimeMin")->GetAccessMode(), RW);
    EXPECT_THROW(map._GetNode("TimeMax")->GetAccessMode(), GenICam::LogicalErrorException);

    // A formula's access is kept only where its variables' can be: over a failing NoCache condition it
    // answers RW once it has failed; over a cached one it fails every time.
    EXPECT_THROW(map._GetNode("Twice")->GetAccessMode(), GenICam::LogicalErrorException);
    EXPECT_EQ(map._GetNode("Twice")->GetAccessMode(), RW);
    EXPECT_THROW(map._GetNode("KeptTwice")->GetAccessMode(), GenICam::LogicalErrorException);
    EXPECT_THROW(map._GetNode("KeptTwice")->GetAccessMode(), GenICam::LogicalErrorException);

    // The RW left behind lasts until something the access depends on changes: then it is evaluated again.
    CIntegerPtr(map._GetNode("MethodReg"))->SetValue(1);
    EXPECT_THROW(guarded->GetAccessMode(), GenICam::LogicalErrorException);
    EXPECT_EQ(guarded->GetAccessMode(), RW);
}

// A node that is not there takes with it what needs it: a condition that is not implemented holds for
// nothing, whatever its register reads, and a register whose index is not implemented is not either.
TEST(AccessRules, ConditionsAndIndicesThatAreNotThereTakeTheirNodesWithThem) {
    SWordMap words(
        R"(<Integer Name="Zero"><Value>0</Value></Integer>
  <Integer Name="Selector"><pIsImplemented>Zero</pIsImplemented><Value>0</Value></Integer>
  <IntReg Name="Indexed"><Address>0x10</Address><pIndex Offset="4">Selector</pIndex><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Endianess>LittleEndian</Endianess></IntReg>
  <MaskedIntReg Name="Gate"><pIsImplemented>Zero</pIsImplemented><Address>0x20</Address><Length>4</Length><AccessMode>RO</AccessMode><pPort>Device</pPort><Bit>0</Bit><Endianess>LittleEndian</Endianess></MaskedIntReg>
  <MaskedIntReg Name="OpenGate"><Address>0x20</Address><Length>4</Length><AccessMode>RO</AccessMode><pPort>Device</pPort><Bit>0</Bit><Endianess>LittleEndian</Endianess></MaskedIntReg>
  <Enumeration Name="Mode"><EnumEntry Name="Gated"><pIsImplemented>Gate</pIsImplemented><Value>0</Value></EnumEntry>
    <EnumEntry Name="Open"><pIsImplemented>OpenGate</pIsImplemented><Value>1</Value></EnumEntry><pValue>ModeReg</pValue></Enumeration>)" +
        intReg("ModeReg", 0x30));
    CNodeMapRef& map = words.map;
    words.port.words[0x20] = 1;
    EXPECT_EQ(map._GetNode("Selector")->GetAccessMode(), NI);
    EXPECT_EQ(map._GetNode("Indexed")->GetAccessMode(), NI);
    EXPECT_EQ(map._GetNode("Gate")->GetAccessMode(), NI);
    // The same bit read by a register that is there implements its entry.
    EXPECT_EQ(map._GetNode("EnumEntry_Mode_Open")->GetAccessMode(), RO);
    EXPECT_EQ(map._GetNode("EnumEntry_Mode_Gated")->GetAccessMode(), NI);
}

// A node passes on what it is computed from: a formula is not implemented when a variable is not, and
// not available when one is not available; a value whose limit is not implemented is not implemented; a
// condition that cannot be read gives its node its own access, not the condition's verdict.
TEST(AccessRules, FormulasLimitsAndConditionsPassOnWhatTheyAreComputedFrom) {
    SWordMap words(R"(<Integer Name="Zero"><Value>0</Value></Integer>
  <Integer Name="Absent"><pIsImplemented>Zero</pIsImplemented><Value>1</Value></Integer>
  <Integer Name="Busy"><pIsAvailable>Zero</pIsAvailable><Value>1</Value></Integer>
  <Integer Name="Here"><Value>1</Value></Integer>
  <IntSwissKnife Name="FromAbsent"><pVariable Name="A">Here</pVariable><pVariable Name="B">Absent</pVariable><Formula>A+B</Formula></IntSwissKnife>
  <IntSwissKnife Name="FromBusy"><pVariable Name="A">Busy</pVariable><Formula>A</Formula></IntSwissKnife>
  <IntSwissKnife Name="FromBoth"><pVariable Name="A">Busy</pVariable><pVariable Name="B">Absent</pVariable><Formula>A+B</Formula></IntSwissKnife>
  <SwissKnife Name="FloatFromBusy"><pVariable Name="A">Busy</pVariable><Formula>A</Formula></SwissKnife>
  <IntConverter Name="ConvertedWithAbsent"><pVariable Name="X">Absent</pVariable><FormulaTo>FROM</FormulaTo><FormulaFrom>TO</FormulaFrom><pValue>Reg</pValue></IntConverter>
  <Integer Name="AbsentMax"><pValue>Reg</pValue><pMax>Absent</pMax></Integer>
  <Integer Name="BusyMax"><pValue>Reg</pValue><pMax>Busy</pMax></Integer>
  <Integer Name="AvailableIfAbsent"><pIsAvailable>Absent</pIsAvailable><Value>1</Value></Integer>
  <Integer Name="ImplementedIfBusy"><pIsImplemented>Busy</pIsImplemented><Value>1</Value></Integer>)" +
                   intReg("Reg", 0x10));
    CNodeMapRef& map = words.map;
    const auto access = [&](const char* name) { return map._GetNode(name)->GetAccessMode(); };
    EXPECT_EQ(access("FromAbsent"), NI);
    EXPECT_EQ(access("FromBusy"), NA);
    EXPECT_EQ(access("FromBoth"), NI);
    EXPECT_EQ(access("FloatFromBusy"), NA);
    EXPECT_EQ(access("ConvertedWithAbsent"), NI);
    EXPECT_EQ(access("AbsentMax"), NI);
    // A limit that is only unavailable leaves the value as its register makes it.
    EXPECT_EQ(access("BusyMax"), RW);
    EXPECT_EQ(access("AvailableIfAbsent"), NI);
    EXPECT_EQ(access("ImplementedIfBusy"), NA);
}

// A float outside its limits is printed half a unit of its text's last decimal nearer to them; in
// scientific notation that unit is the mantissa's, so a tiny value moves by far more than itself.
TEST(ValueRules, FloatsOutsideTheirLimitsArePrintedHalfAUnitNearer) {
    SWordMap words(R"(<Float Name="Above"><Value>56780.984375</Value><Min>-2</Min><Max>2</Max></Float>
  <Float Name="Below"><Value>-10</Value><Min>0.015</Min><Max>45.8</Max></Float>
  <Float Name="Fine"><Value>836.87371808904447</Value><Min>373</Min><Max>825</Max></Float>
  <Float Name="Tiny"><Value>1.0223622621229056e-07</Value><Min>9.7e30</Min><Max>1.9e34</Max></Float>
  <Float Name="Inside"><Value>1.5</Value><Min>0</Min><Max>2</Max></Float>)");
    const auto text = [&](const char* name) {
        return std::string(CFloatPtr(words.map._GetNode(name))->ToString().c_str());
    };
    EXPECT_EQ(text("Above"), "56780.5");
    EXPECT_EQ(text("Below"), "-9.5");
    EXPECT_EQ(text("Fine"), "836.873");
    EXPECT_EQ(text("Tiny"), "5.10224e-06");
    EXPECT_EQ(text("Inside"), "1.5");
    // The value itself is untouched.
    EXPECT_DOUBLE_EQ(CFloatPtr(words.map._GetNode("Below"))->GetValue(), -10.0);
}

// A value written to pValue and to each pValueCopy must fit all of them: its limits are where their ranges
// overlap.
TEST(ValueRules, CopiedValuesTakeTheLimitsAllTheirTargetsShare) {
    SWordMap words(intReg("Wide", 0) + intReg("Narrow", 8, "", 2) +
                   R"(<Integer Name="Both"><pValue>Wide</pValue><pValueCopy>Narrow</pValueCopy></Integer>
  <Integer Name="Alone"><pValue>Wide</pValue></Integer>)");
    CIntegerPtr both(words.map._GetNode("Both"));
    EXPECT_EQ(both->GetMin(), 0);
    EXPECT_EQ(both->GetMax(), 65535);
    EXPECT_EQ(CIntegerPtr(words.map._GetNode("Alone"))->GetMax(), 4294967295);
    both->SetValue(300);
    EXPECT_EQ(words.port.words[0], 300u);
    EXPECT_EQ(words.port.words[8] & 0xFFFF, 300u);
    EXPECT_THROW(both->SetValue(70000), GenICam::OutOfRangeException);

    SWordMap floats(
        R"(<FloatReg Name="First"><Address>0</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Endianess>LittleEndian</Endianess></FloatReg>
  <FloatReg Name="Second"><Address>4</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Endianess>LittleEndian</Endianess></FloatReg>
  <Float Name="Shared"><pValue>First</pValue><pValueCopy>Second</pValueCopy></Float>)");
    CFloatPtr(floats.map._GetNode("Shared"))->SetValue(2.5);
    EXPECT_EQ(CFloatPtr(floats.map._GetNode("First"))->GetValue(), 2.5);
    EXPECT_EQ(CFloatPtr(floats.map._GetNode("Second"))->GetValue(), 2.5);
}

// Integers whose value the description writes as a number: one that nothing reads keeps its written value
// through invalidations; one that a formula reads passes each write on to the formula.
TEST(ValueRules, IntegersWithAValueKeepWhatIsWrittenAndPassItOn) {
    SWordMap words(R"(<Integer Name="Alone"><Value>0x10</Value><Min>0</Min><Max>100</Max></Integer>
  <Integer Name="Read"><Value>3</Value><Min>0</Min><Max>100</Max></Integer>
  <IntSwissKnife Name="Twice"><pVariable Name="R">Read</pVariable><Formula>2*R</Formula></IntSwissKnife>)");
    CNodeMapRef& map = words.map;
    CIntegerPtr alone(map._GetNode("Alone")), read(map._GetNode("Read")), twice(map._GetNode("Twice"));
    EXPECT_EQ(alone->GetValue(), 16);
    EXPECT_EQ(alone->GetMax(), 100);
    alone->SetValue(42);
    map._InvalidateNodes();
    EXPECT_EQ(alone->GetValue(), 42);
    EXPECT_EQ(alone->ToString(), "42");
    EXPECT_THROW(alone->SetValue(101), GenICam::OutOfRangeException);
    EXPECT_EQ(alone->GetValue(), 42);
    EXPECT_EQ(twice->GetValue(), 6);
    read->SetValue(7);
    EXPECT_EQ(read->GetValue(), 7);
    EXPECT_EQ(twice->GetValue(), 14);
}

TEST(DescriptionRules, StructEntriesOverrideTheirRegisterAndConditionsAreIntegersOrBooleans) {
    SWordMap words(
        R"(<StructReg Comment="Flags"><Address>0</Address><Length>4</Length><AccessMode>RO</AccessMode><pPort>Device</pPort><Endianess>LittleEndian</Endianess>
    <StructEntry Name="Switch"><AccessMode>RW</AccessMode><Bit>0</Bit></StructEntry>
    <StructEntry Name="Status"><Bit>1</Bit></StructEntry>
  </StructReg>
  <Boolean Name="Hidden"><Value>0</Value><OnValue>1</OnValue><OffValue>0</OffValue></Boolean>
  <String Name="Text"><Value>0</Value></String>
  <Integer Name="Guarded"><pIsAvailable>Hidden</pIsAvailable><Value>5</Value></Integer>
  <Integer Name="Absent"><pIsImplemented>Hidden</pIsImplemented><Value>5</Value></Integer>
  <Integer Name="TextGuarded"><pIsAvailable>Text</pIsAvailable><Value>5</Value></Integer>
  <Category Name="Group"><pIsAvailable>Hidden</pIsAvailable><pFeature>TextGuarded</pFeature></Category>
  <Integer Name="Zero"><Value>0</Value></Integer>
  <Integer Name="Unavailable"><pIsAvailable>Zero</pIsAvailable><Value>5</Value></Integer>)");
    CNodeMapRef& map = words.map;
    EXPECT_EQ(map._GetNode("Switch")->GetAccessMode(), RW);
    EXPECT_EQ(map._GetNode("Status")->GetAccessMode(), RO);
    // Integers and booleans named as conditions are consulted, a string is not; a category does not
    // consult a boolean.
    EXPECT_EQ(map._GetNode("Guarded")->GetAccessMode(), NA);
    EXPECT_EQ(map._GetNode("Absent")->GetAccessMode(), NI);
    EXPECT_EQ(map._GetNode("Unavailable")->GetAccessMode(), NA);
    EXPECT_EQ(map._GetNode("TextGuarded")->GetAccessMode(), RW);
    EXPECT_EQ(map._GetNode("Group")->GetAccessMode(), RO);
    CBooleanPtr(map._GetNode("Hidden"))->SetValue(true);
    EXPECT_EQ(map._GetNode("Guarded")->GetAccessMode(), RW);
}

namespace {

std::string propertyOf(CNodeMapRef& map, const char* node, const char* property,
                       gcstring* attribute = nullptr) {
    gcstring value, attributes;
    if (!map._GetNode(node)->GetProperty(property, value, attributes))
        return "<none>";
    if (attribute)
        *attribute = attributes;
    return value.c_str();
}

const char* const propertyNodes =
    R"(<Category Name="Root"><pFeature>Gain</pFeature><pFeature>Mode</pFeature></Category>
  <Integer Name="Gain"><Extension><Vendor Key="a"/>
      <Note>text</Note></Extension><pValue>GainConverter</pValue></Integer>
  <IntConverter Name="GainConverter"><pVariable Name="ZOFFSET">Offset</pVariable><pVariable Name="A">Scale</pVariable>
    <FormulaTo> (FROM - ZOFFSET) / A </FormulaTo><FormulaFrom> TO * A + ZOFFSET </FormulaFrom><pValue>GainReg</pValue></IntConverter>
  <Integer Name="Offset"><Value>0x10</Value></Integer>
  <Integer Name="Scale"><Value>1</Value></Integer>
  <IntReg Name="GainReg"><Address>0x20</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Endianess>LittleEndian</Endianess></IntReg>
  <Enumeration Name="Mode"><EnumEntry Name="Off"><Value>0</Value></EnumEntry><EnumEntry Name="On"><Value>0x2</Value></EnumEntry>
    <pValue>ModeReg</pValue><pSelected>Gain</pSelected></Enumeration>
  <MaskedIntReg Name="ModeReg"><Address>0x24</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Bit>1</Bit><Endianess>LittleEndian</Endianess></MaskedIntReg>
  <StructReg Comment="Flags"><Address>0x30</Address><Length>4</Length><AccessMode>RO</AccessMode><pPort>Device</pPort>
    <pInvalidator>GainReg</pInvalidator><pInvalidator>ModeReg</pInvalidator><Endianess>LittleEndian</Endianess>
    <StructEntry Name="Flag"><Bit>0</Bit></StructEntry>
  </StructReg>
  <IntSwissKnife Name="Doubled"><pVariable Name="G">GainReg</pVariable><Constant Name="K">2</Constant><Formula>G*K</Formula></IntSwissKnife>
  <String Name="Label"><Value>0x12</Value></String>)";

}  // namespace

TEST(PropertyRules, GenApiListsDerivedLinksDefaultsAndNumbersInDecimal) {
    SWordMap words(propertyNodes);
    CNodeMapRef& map = words.map;
    gcstring attribute;

    // Dependents reach through every link, a pSelected the other way round, and a converter's formula
    // nodes; they come in the reverse of the order in which the description first names them.
    EXPECT_EQ(propertyOf(map, "GainReg", "pDependent"), "Doubled\tFlag\tGainConverter\tGain\tRoot");
    EXPECT_EQ(propertyOf(map, "Offset", "pDependent"),
              "GainConverter_ConvertFrom\tGainConverter_ConvertTo\tGainConverter\tGain\tRoot");
    EXPECT_EQ(propertyOf(map, "Mode", "pDependent"), "Gain\tRoot");
    EXPECT_EQ(propertyOf(map, "EnumEntry_Mode_On", "pDependent"), "Mode\tGain\tRoot");
    EXPECT_EQ(propertyOf(map, "ModeReg", "pDependent"), "Flag\tMode\tGain\tRoot");
    EXPECT_EQ(propertyOf(map, "Root", "pDependent"), "<none>");

    // Terminals: the registers at the end of the value chain, or the node holding its own value.
    EXPECT_EQ(propertyOf(map, "Gain", "pTerminal"), "GainReg");
    EXPECT_EQ(propertyOf(map, "Mode", "pTerminal"), "ModeReg");
    EXPECT_EQ(propertyOf(map, "Offset", "pTerminal"), "Offset");
    EXPECT_EQ(propertyOf(map, "EnumEntry_Mode_On", "pTerminal"), "EnumEntry_Mode_On");
    EXPECT_EQ(propertyOf(map, "Root", "pTerminal"), "<none>");
    EXPECT_EQ(propertyOf(map, "Gain", "pSelecting"), "Mode");
    EXPECT_EQ(propertyOf(map, "Mode", "pEnumEntry"), "EnumEntry_Mode_Off\tEnumEntry_Mode_On");

    // Numbers in decimal, a bit as a range of one, defaults GenApi fills in.
    EXPECT_EQ(propertyOf(map, "GainReg", "Address"), "32");
    EXPECT_EQ(propertyOf(map, "GainReg", "Sign"), "Unsigned");
    EXPECT_EQ(propertyOf(map, "GainReg", "Representation"), "PureNumber");
    EXPECT_EQ(propertyOf(map, "GainReg", "NodeType"), "IntReg");
    EXPECT_EQ(propertyOf(map, "Offset", "Value"), "16");
    EXPECT_EQ(propertyOf(map, "Label", "Value"), "0x12");
    EXPECT_EQ(propertyOf(map, "ModeReg", "LSB"), "1");
    EXPECT_EQ(propertyOf(map, "ModeReg", "MSB"), "1");
    EXPECT_EQ(propertyOf(map, "ModeReg", "Bit"), "<none>");
    EXPECT_EQ(propertyOf(map, "Flag", "NodeType"), "MaskedIntReg");
    EXPECT_EQ(propertyOf(map, "Gain", "ImposedAccessMode"), "RW");
    EXPECT_EQ(propertyOf(map, "Gain", "IsFeature"), "Yes");
    EXPECT_EQ(propertyOf(map, "Offset", "IsFeature"), "No");
    EXPECT_EQ(propertyOf(map, "Gain", "Streamable"), "No");

    // An entry: full name, its symbol, its value as a number; its device name is listed without a value.
    EXPECT_EQ(propertyOf(map, "EnumEntry_Mode_On", "Name"), "EnumEntry_Mode_On");
    EXPECT_EQ(propertyOf(map, "EnumEntry_Mode_On", "Symbolic"), "On");
    EXPECT_EQ(propertyOf(map, "EnumEntry_Mode_On", "Value"), "2");
    EXPECT_EQ(propertyOf(map, "EnumEntry_Mode_On", "NumericValue"), "2");
    EXPECT_EQ(propertyOf(map, "EnumEntry_Mode_On", "DeviceName"), "<none>");
    GenICam::gcstring_vector names;
    map._GetNode("EnumEntry_Mode_On")->GetPropertyNames(names);
    EXPECT_TRUE(names.contains("DeviceName"));
    EXPECT_EQ(propertyOf(map, "Gain", "DeviceName"), map._GetNode("Gain")->GetDeviceName().c_str());

    // A converter: variables sorted by their names, formulas as written, its formula nodes, and the slope
    // it has between its pValue's limits.
    EXPECT_EQ(propertyOf(map, "GainConverter", "pVariable", &attribute), "Scale\tOffset");
    EXPECT_STREQ(attribute.c_str(), "A\tZOFFSET");
    EXPECT_EQ(propertyOf(map, "GainConverter", "FormulaFrom"), " TO * A + ZOFFSET ");
    EXPECT_EQ(propertyOf(map, "GainConverter", "pSwissKnifeTo"), "GainConverter_ConvertTo");
    EXPECT_EQ(propertyOf(map, "GainConverter", "Slope"), "Increasing");
    EXPECT_EQ(propertyOf(map, "GainConverter", "Representation"), "<none>");

    // Extensions come back as their elements, each closed, without the whitespace between them.
    EXPECT_EQ(propertyOf(map, "Gain", "Extension"), "<Vendor Key=\"a\"></Vendor><Note>text</Note>");
    // Attributes without their names; none at all for a list whose elements have none.
    EXPECT_EQ(propertyOf(map, "Root", "pFeature", &attribute), "Gain\tMode");
    EXPECT_STREQ(attribute.c_str(), "");
}

// A selector selects what reads its selected nodes too, breadth first; a node names the selectors that
// name it before those that reach it through others. Indexed values come by their index, in decimal;
// terminals in the order GenApi numbers nodes, copies included; an alias is no dependent.
TEST(PropertyRules, SelectionsReachReadersAndListsComeInGenApisOrder) {
    SWordMap words(R"(<Integer Name="Copy"><Value>0</Value></Integer>
  <Enumeration Name="FileSel"><EnumEntry Name="A"><Value>0</Value></EnumEntry><pValue>SelReg</pValue><pSelected>Size</pSelected></Enumeration>
  <Enumeration Name="OpSel"><EnumEntry Name="Read"><Value>0</Value></EnumEntry><pValue>OpReg</pValue><pSelected>Offset</pSelected></Enumeration>
  <Integer Name="Size"><pValue>SizeReg</pValue></Integer>
  <IntSwissKnife Name="MaxOffset"><pVariable Name="S">Size</pVariable><Formula>S</Formula></IntSwissKnife>
  <Integer Name="Offset"><pValue>OffsetReg</pValue><pMax>MaxOffset</pMax></Integer>
  <Integer Name="Aliased"><pAlias>Size</pAlias><Value>1</Value></Integer>
  <Integer Name="Splitter"><pValue>OffsetReg</pValue><pValueCopy>Copy</pValueCopy></Integer>
  <Integer Name="IndexSource"><Value>1</Value></Integer>
  <Integer Name="Indexed"><pIndex>IndexSource</pIndex><ValueIndexed Index="0x3">30</ValueIndexed><ValueIndexed Index="1">0x10</ValueIndexed><ValueDefault>0x5</ValueDefault></Integer>
  <IntReg Name="Stepped"><Address>0x40</Address><pIndex Offset="0x20">IndexSource</pIndex><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Endianess>LittleEndian</Endianess></IntReg>)" +
                   intReg("SelReg", 0) + intReg("OpReg", 4) + intReg("SizeReg", 8) + intReg("OffsetReg", 12));
    CNodeMapRef& map = words.map;
    gcstring attribute;

    EXPECT_EQ(propertyOf(map, "FileSel", "pSelected"), "Size\tMaxOffset\tOffset");
    EXPECT_EQ(propertyOf(map, "OpSel", "pSelected"), "Offset");
    EXPECT_EQ(propertyOf(map, "Offset", "pSelecting"), "OpSel\tFileSel");
    FeatureList_t selected;
    CSelectorPtr(map._GetNode("FileSel"))->GetSelectedFeatures(selected);
    ASSERT_EQ(selected.size(), 3u);
    EXPECT_STREQ(selected[2]->GetNode()->GetName().c_str(), "Offset");

    EXPECT_EQ(propertyOf(map, "Indexed", "ValueIndexed", &attribute), "16\t30");
    EXPECT_STREQ(attribute.c_str(), "1\t3");
    EXPECT_EQ(propertyOf(map, "Indexed", "ValueDefault"), "5");
    EXPECT_EQ(propertyOf(map, "Indexed", "pTerminal"), "Indexed");
    EXPECT_EQ(propertyOf(map, "Stepped", "pIndex", &attribute), "IndexSource");
    EXPECT_STREQ(attribute.c_str(), "32");

    EXPECT_EQ(propertyOf(map, "Splitter", "pTerminal"), "Copy\tOffsetReg");
    const std::string dependents = propertyOf(map, "Size", "pDependent");
    EXPECT_EQ(dependents.find("Aliased"), std::string::npos) << dependents;
    EXPECT_NE(dependents.find("MaxOffset"), std::string::npos) << dependents;
}

// GenApi makes nodes the description only implies: a converter's two formula nodes, evaluated with
// nothing behind their input, and an integer node for each constant of an integer formula.
TEST(DescriptionRules, ConvertersAndConstantsImplyNodesOfTheirOwn) {
    SWordMap words(propertyNodes);
    CNodeMapRef& map = words.map;
    words.port.words[0x20] = 5;

    CIntegerPtr from = map._GetNode("GainConverter_ConvertFrom");
    CIntegerPtr to = map._GetNode("GainConverter_ConvertTo");
    ASSERT_TRUE(from.IsValid());
    ASSERT_TRUE(to.IsValid());
    EXPECT_EQ(from->GetAccessMode(), RO);
    EXPECT_FALSE(from->GetNode()->IsFeature());
    // " TO * A + ZOFFSET " and " (FROM - ZOFFSET) / A " with TO and FROM at 0, A 1, ZOFFSET 16.
    EXPECT_EQ(from->GetValue(), 16);
    EXPECT_EQ(to->GetValue(), -16);
    EXPECT_EQ(from->GetMin(), INT64_MIN);
    EXPECT_EQ(from->GetMax(), INT64_MAX);
    // The converter itself still converts its pValue.
    EXPECT_EQ(CIntegerPtr(map._GetNode("Gain"))->GetValue(), 21);
    EXPECT_EQ(propertyOf(map, "GainConverter_ConvertFrom", "NodeType"), "IntSwissKnife");
    EXPECT_EQ(propertyOf(map, "GainConverter_ConvertFrom", "InputDirection"), "From");
    EXPECT_EQ(propertyOf(map, "GainConverter_ConvertTo", "Formula"), " (FROM - ZOFFSET) / A ");
    EXPECT_EQ(propertyOf(map, "GainConverter_ConvertTo", "pVariable"), "Scale\tOffset");
    EXPECT_EQ(propertyOf(map, "GainConverter_ConvertTo", "pDependent"), "GainConverter\tGain\tRoot");

    CIntegerPtr constant = map._GetNode("_Doubled_K");
    ASSERT_TRUE(constant.IsValid());
    EXPECT_EQ(constant->GetValue(), 2);
    EXPECT_EQ(constant->GetAccessMode(), RW);
    EXPECT_EQ(CIntegerPtr(map._GetNode("Doubled"))->GetValue(), 10);
    EXPECT_EQ(propertyOf(map, "_Doubled_K", "pDependent"), "Doubled");
    // The formula reads its constant from the node, so a write to the node reaches the formula.
    constant->SetValue(3);
    EXPECT_EQ(CIntegerPtr(map._GetNode("Doubled"))->GetValue(), 15);

    NodeList_t nodes;
    map._GetNodes(nodes);
    std::vector<std::string> names;
    for (INode* node : nodes)
        names.push_back(node->GetName().c_str());
    for (const char* implied : {"GainConverter_ConvertFrom", "GainConverter_ConvertTo", "_Doubled_K"})
        EXPECT_NE(std::find(names.begin(), names.end(), implied), names.end()) << implied;
}

// A formula defined inside a register adds to its address like a pAddress node, and is a node of its own:
// "_<register>_<name>" inside a named register, its own name inside a StructReg.
TEST(DescriptionRules, NodesDefinedInsideRegistersAreNodesOfTheirOwn) {
    SWordMap words(R"(<Integer Name="Index"><Value>2</Value></Integer>
  <IntReg Name="Indexed"><Address>0x100</Address><IntSwissKnife Name="Offset"><pVariable Name="I">Index</pVariable><Formula>I * 4</Formula></IntSwissKnife><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>
  <StructReg Comment="Flags"><Address>0x200</Address><IntSwissKnife Name="FlagsOffset"><Formula>3 * 4</Formula></IntSwissKnife><Length>4</Length><AccessMode>RO</AccessMode><pPort>Device</pPort><Endianess>LittleEndian</Endianess>
    <StructEntry Name="FlagA"><Bit>0</Bit></StructEntry><StructEntry Name="FlagB"><Bit>1</Bit></StructEntry></StructReg>)");
    CNodeMapRef& map = words.map;
    words.port.words[0x108] = 77;
    words.port.words[0x20c] = 2;

    CIntegerPtr offset = map._GetNode("_Indexed_Offset");
    ASSERT_TRUE(offset.IsValid());
    EXPECT_EQ(map._GetNode("Offset"), nullptr);
    EXPECT_EQ(offset->GetValue(), 8);
    EXPECT_EQ(offset->GetNode()->GetDisplayName(), "_Indexed_Offset");
    EXPECT_EQ(offset->GetAccessMode(), RO);
    CIntegerPtr indexed = map._GetNode("Indexed");
    EXPECT_EQ(CRegisterPtr(indexed)->GetAddress(), 0x108);
    EXPECT_EQ(indexed->GetValue(), 77);
    // The inline formula is what the register's value depends on, so a change of its variable reaches it.
    CIntegerPtr(map._GetNode("Index"))->SetValue(3);
    words.port.words[0x10c] = 78;
    EXPECT_EQ(indexed->GetValue(), 78);

    CIntegerPtr flagsOffset = map._GetNode("FlagsOffset");
    ASSERT_TRUE(flagsOffset.IsValid());
    EXPECT_EQ(flagsOffset->GetValue(), 12);
    EXPECT_EQ(CIntegerPtr(map._GetNode("FlagA"))->GetValue(), 0);
    EXPECT_EQ(CIntegerPtr(map._GetNode("FlagB"))->GetValue(), 1);
}

// Whitespace around names and numbers does not stop the engine (GenApi refuses such a description; the
// engine loads it leniently and then reads it as if the texts were trimmed).
TEST(DescriptionRules, NamesAndNumbersWrittenWithWhitespaceAroundThemWork) {
    SWordMap words(R"(<Integer Name="Gain">
      <pValue>
        GainReg
      </pValue>
    </Integer>
    <IntReg Name="GainReg"><Address>
        0x10
      </Address><Length> 4 </Length><AccessMode>
        RW
      </AccessMode><pPort>
        Device
      </pPort><Endianess>LittleEndian</Endianess></IntReg>)");
    words.port.words[0x10] = 9;
    CIntegerPtr gain = words.map._GetNode("Gain");
    EXPECT_EQ(gain->GetAccessMode(), RW);
    EXPECT_EQ(gain->GetValue(), 9);
    gain->SetValue(11);
    EXPECT_EQ(words.port.words[0x10], 11u);
}

TEST(DescriptionRules, StructEntriesInheritEveryInvalidatorOfTheirRegister) {
    SWordMap words(propertyNodes);
    CIntegerPtr flag = words.map._GetNode("Flag");
    CIntegerPtr modeReg = words.map._GetNode("ModeReg");
    words.port.words[0x30] = 1;
    EXPECT_EQ(flag->GetValue(), 1);
    // Changed behind the map's back: the kept value holds until an invalidator changes.
    words.port.words[0x30] = 0;
    EXPECT_EQ(flag->GetValue(), 1);
    // The struct register's second invalidator reaches the entry as well as the first.
    modeReg->SetValue(0);
    EXPECT_EQ(flag->GetValue(), 0);
    EXPECT_EQ(propertyOf(words.map, "Flag", "pInvalidator"), "GainReg\tModeReg");
}

namespace {

struct SCalls {
    void onChange(INode* node) { names.push_back(node->GetName().c_str()); }
    std::vector<std::string> names;
};

}  // namespace

// Poll invalidates a polled register and calls back what depends on it; a polled command is only asked
// whether a running execution has finished, and calls back when it has.
TEST(PollRules, PolledRegistersAreInvalidatedAndPolledCommandsReportTheirEnd) {
    SWordMap words(
        intReg("Temperature", 0, "<PollingTime>100</PollingTime><Cachable>WriteThrough</Cachable>") +
        R"(<Integer Name="Celsius"><pValue>Temperature</pValue></Integer>
  <Command Name="Save"><pValue>SaveReg</pValue><CommandValue>1</CommandValue><PollingTime>100</PollingTime></Command>
)" + intReg("SaveReg", 4, "<Cachable>NoCache</Cachable>"));
    CNodeMapRef& map = words.map;
    SCalls calls;
    for (const char* name : {"Temperature", "Celsius", "Save", "SaveReg"})
        Register(map._GetNode(name), calls, &SCalls::onChange);
    words.load({{0, 20}, {4, 0}});
    EXPECT_EQ(CIntegerPtr(map._GetNode("Celsius"))->GetValue(), 20);
    words.port.words[0] = 21;
    calls.names.clear();
    map._Poll(100);
    EXPECT_EQ(CIntegerPtr(map._GetNode("Celsius"))->GetValue(), 21);
    std::sort(calls.names.begin(), calls.names.end());
    EXPECT_EQ(calls.names, (std::vector<std::string>{"Celsius", "Temperature"}));

    CCommandPtr save(map._GetNode("Save"));
    save->Execute();
    calls.names.clear();
    map._Poll(100);  // still running: nothing to report
    EXPECT_EQ(std::count(calls.names.begin(), calls.names.end(), "Save"), 0);
    words.port.words[4] = 0;  // the device finished
    calls.names.clear();
    map._Poll(100);
    EXPECT_EQ(std::count(calls.names.begin(), calls.names.end(), "Save"), 1);
    calls.names.clear();
    map._Poll(100);  // done and not run again: nothing at all
    EXPECT_EQ(std::count(calls.names.begin(), calls.names.end(), "Save"), 0);
}

// A register keeps what it read whatever adds up to its place (one Address, several, or a node giving
// it): invalidating the feature on it computes the feature again from that, and only the register's own
// invalidation, or a read ignoring the cache (and the read after it), reads the device again.
TEST(RegisterCaching, RegistersKeepWhatTheyReadWhereverTheirPlaceComesFrom) {
    SWordMap words(
        R"(<IntReg Name="SummedReg"><Address>0x100</Address><Address>0x20</Address><Length>4</Length><AccessMode>RO</AccessMode><pPort>Device</pPort><Endianess>LittleEndian</Endianess></IntReg>
  <IntReg Name="SingleReg"><Address>0x200</Address><Length>4</Length><AccessMode>RO</AccessMode><pPort>Device</pPort><Endianess>LittleEndian</Endianess></IntReg>
  <Integer Name="Where"><Value>0x300</Value></Integer>
  <IntReg Name="ComputedReg"><pAddress>Where</pAddress><Length>4</Length><AccessMode>RO</AccessMode><pPort>Device</pPort><Endianess>LittleEndian</Endianess></IntReg>
  <Integer Name="Summed"><pValue>SummedReg</pValue></Integer>
  <Integer Name="Single"><pValue>SingleReg</pValue></Integer>
  <Integer Name="Computed"><pValue>ComputedReg</pValue></Integer>)");
    words.load({{0x120, 7}, {0x200, 7}, {0x300, 7}});
    const std::map<std::string, int64_t> addresses = {
        {"Summed", 0x120}, {"Single", 0x200}, {"Computed", 0x300}};
    for (const auto& place : addresses) {
        SCOPED_TRACE(place.first);
        CIntegerPtr feature(words.map._GetNode(place.first.c_str()));
        EXPECT_EQ(feature->GetValue(), 7);
        words.port.words[place.second] = 9;
        feature->GetNode()->InvalidateNode();
        EXPECT_EQ(feature->GetValue(), 7);
        words.map._GetNode((place.first + "Reg").c_str())->InvalidateNode();
        EXPECT_EQ(feature->GetValue(), 9);
        words.port.words[place.second] = 11;
        EXPECT_EQ(feature->GetValue(false, true), 11);
        words.port.words[place.second] = 12;
        EXPECT_EQ(feature->GetValue(), 12);
    }
}

// A write keeps what it wrote in its register though the write reaches the register's pInvalidator, as
// GenApi caches a written value after the invalidation the write causes; the invalidator's own change
// still drops the bytes.
TEST(RegisterCaching, AWriteKeepsWhatItWroteThoughItReachesTheInvalidator) {
    SWordMap words(
        R"(<IntReg Name="LevelReg"><Address>0x40</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><pInvalidator>Twice</pInvalidator><Endianess>LittleEndian</Endianess></IntReg>
  <Integer Name="Level"><pValue>LevelReg</pValue></Integer>
  <IntSwissKnife Name="Twice"><pVariable Name="L">Level</pVariable><Formula>L*2</Formula></IntSwissKnife>)");
    words.load({{0x40, 1}});
    CIntegerPtr level(words.map._GetNode("Level"));
    EXPECT_EQ(level->GetValue(), 1);
    level->SetValue(5);
    const int reads = words.port.reads;
    EXPECT_EQ(level->GetValue(), 5);
    EXPECT_EQ(CIntegerPtr(words.map._GetNode("Twice"))->GetValue(), 10);
    EXPECT_EQ(words.port.reads, reads);

    words.port.words[0x40] = 9;
    words.map._GetNode("Twice")->InvalidateNode();
    EXPECT_EQ(level->GetValue(), 9);
    EXPECT_EQ(words.port.reads, reads + 1);
}

// A command, a boolean and an enumeration write their value to their pValue node as any write would, so
// that the integer's pValueCopy registers receive it too.
TEST(WriteRules, CommandsBooleansAndEnumerationsWriteThroughThePValueNodeAndItsCopies) {
    SWordMap words(intReg("CopyA", 0x50) + intReg("CopyB", 0x60) +
                   R"(<Integer Name="Source"><Value>0</Value></Integer>
  <Integer Name="Shared"><pValue>Source</pValue><pValueCopy>CopyA</pValueCopy><pValueCopy>CopyB</pValueCopy></Integer>
  <Command Name="Reset"><pValue>Shared</pValue><CommandValue>3</CommandValue></Command>
  <Boolean Name="Switch"><pValue>Shared</pValue><OnValue>5</OnValue><OffValue>4</OffValue></Boolean>
  <Enumeration Name="Mode"><EnumEntry Name="Six"><Value>6</Value></EnumEntry><pValue>Shared</pValue></Enumeration>)");
    words.load({{0x50, 7}, {0x60, 8}});
    auto copies = [&](uint32_t value) {
        EXPECT_EQ(words.port.words[0x50], value);
        EXPECT_EQ(words.port.words[0x60], value);
        EXPECT_EQ(CIntegerPtr(words.map._GetNode("CopyA"))->GetValue(), value);
    };
    CCommandPtr(words.map._GetNode("Reset"))->Execute();
    copies(3);
    CBooleanPtr(words.map._GetNode("Switch"))->SetValue(true);
    copies(5);
    CBooleanPtr(words.map._GetNode("Switch"))->SetValue(false);
    copies(4);
    CEnumerationPtr(words.map._GetNode("Mode"))->FromString("Six");
    copies(6);
}

// A float outside its limits prints half a unit of its text's last decimal nearer to them, but one whose
// text already lies on the limits (a write of the minimum read back through a converter) prints as it is.
TEST(FloatTexts, ValuesJustOutsideTheirLimitsPrintAsTheyRound) {
    SWordMap words(
        intReg("RawReg", 0x70) +
        R"(<Converter Name="Scaled"><FormulaTo>(FROM * 1000) / 0.122070312</FormulaTo><FormulaFrom>TO * 0.000122070312</FormulaFrom><pValue>RawReg</pValue><Slope>Varying</Slope></Converter>
  <Float Name="Ratio"><pValue>Scaled</pValue><Min>0.5</Min><Max>1</Max></Float>
  <Float Name="Far"><pValue>Scaled</pValue><Min>-2</Min><Max>2</Max></Float>)");
    words.load({{0x70, 0}});
    CFloatPtr ratio(words.map._GetNode("Ratio"));
    ratio->SetValue(0.5);
    EXPECT_LT(ratio->GetValue(), 0.5);
    EXPECT_STREQ(ratio->ToString().c_str(), "0.5");
    words.load({{0x70, 465149952}});  // about 56781 through the converter, printed "56781" unmoved
    EXPECT_STREQ(CFloatPtr(words.map._GetNode("Far"))->ToString().c_str(), "56780.5");
}
