// The name catalogue (counts, order, paths, types) and the JSON export of node trees.
#include "../genapi/MemoryDescriptions.h"
#include "LibraryFixture.h"
#include <GenApi/GenApi.h>
#include <QJsonArray>
#include <QJsonDocument>
#include <map>
#include <parametercollection/ParameterCollection.h>
#include <parametercollection/ParameterNameCatalogue.h>
#include <parametercollection/ParameterPath.h>
#include <parametercollection/internal/NodemapToJsonConverter.h>
#include <type_traits>

namespace {

struct SCatalogueEntry {
    std::string nameSpace;
    std::string type;
    std::string identifier;
    std::string path;
};

// Every entry of the catalogue, read through the same generated list the header is made of.
std::vector<SCatalogueEntry> catalogueEntries() {
    std::vector<SCatalogueEntry> entries;
#define PARAMETERCOLLECTION_CATALOGUE_NAME(Namespace, Type, Identifier, Path) \
    entries.push_back(SCatalogueEntry{#Namespace, #Type, #Identifier, Path});
#include <parametercollection/ParameterNameCatalogueEntries.inc>
#undef PARAMETERCOLLECTION_CATALOGUE_NAME
    return entries;
}

const std::map<std::string, std::string> prefixes = {{"TRCamera", "@CameraDevice"},
                                                     {"TRStream", "@StreamGrabber0"},
                                                     {"TRTransportLayer", "@DeviceTransportLayer"},
                                                     {"TRChunkData", "@ChunkData"},
                                                     {"TRCameraInstance", "@CameraInstance"},
                                                     {"TREventGrabber", "@EventGrabber"},
                                                     {"TRVideoWriter", "@VideoWriter"},
                                                     {"TRImageFormatConverter", "@ImageFormatConverter"}};

}  // namespace

TEST(NameCatalogue, CountsOrderAndPathsOfEveryNamespace) {
    const std::vector<SCatalogueEntry> entries = catalogueEntries();
    std::map<std::string, std::map<std::string, int>> counts;
    std::map<std::pair<std::string, std::string>, std::string> previous;
    for (const SCatalogueEntry& entry : entries) {
        ++counts[entry.nameSpace][entry.type];
        ASSERT_EQ(prefixes.count(entry.nameSpace), 1u) << entry.nameSpace;
        EXPECT_EQ(entry.path, prefixes.at(entry.nameSpace) + "/" + entry.identifier);
        // Each group is in character-code order (upper case before lower case).
        std::string& last = previous[{entry.nameSpace, entry.type}];
        EXPECT_LT(last, entry.identifier) << entry.nameSpace << "::" << entry.identifier;
        last = entry.identifier;
    }
    // The camera's maker-prefixed features (89) have no source here; everything else is listed.
    using Counts = std::map<std::string, int>;
    EXPECT_EQ(counts["TRCamera"], (Counts{{"IntegerParameterName", 296},
                                          {"FloatParameterName", 71},
                                          {"BooleanParameterName", 72},
                                          {"CommandParameterName", 40},
                                          {"EnumParameterName", 163},
                                          {"StringParameterName", 13}}));
    EXPECT_EQ(counts["TRStream"], (Counts{{"IntegerParameterName", 45},
                                          {"BooleanParameterName", 4},
                                          {"EnumParameterName", 7},
                                          {"StringParameterName", 3}}));
    EXPECT_EQ(counts["TRTransportLayer"], (Counts{{"IntegerParameterName", 40},
                                                  {"FloatParameterName", 18},
                                                  {"BooleanParameterName", 4},
                                                  {"CommandParameterName", 1},
                                                  {"EnumParameterName", 19},
                                                  {"StringParameterName", 9}}));
    EXPECT_EQ(counts["TRChunkData"],
              (Counts{{"IntegerParameterName", 27}, {"FloatParameterName", 2}, {"EnumParameterName", 3}}));
    EXPECT_EQ(counts["TRCameraInstance"],
              (Counts{{"IntegerParameterName", 11}, {"BooleanParameterName", 9}}));
    EXPECT_EQ(counts["TREventGrabber"], (Counts{{"IntegerParameterName", 8}, {"EnumParameterName", 1}}));
    EXPECT_EQ(counts["TRVideoWriter"],
              (Counts{{"IntegerParameterName", 6}, {"FloatParameterName", 2}, {"EnumParameterName", 1}}));
    EXPECT_EQ(counts["TRImageFormatConverter"],
              (Counts{{"IntegerParameterName", 2}, {"FloatParameterName", 1}, {"EnumParameterName", 4}}));
    EXPECT_EQ(entries.size(), 971u - 89u);
}

TEST(NameCatalogue, ConstantsAreTypedNamesLikeHandBuiltOnes) {
    using namespace ParameterCollection;
    static_assert(std::is_same_v<decltype(TRCamera::ExposureTime), const FloatParameterName>);
    static_assert(std::is_same_v<decltype(TRCamera::Width), const IntegerParameterName>);
    static_assert(std::is_same_v<decltype(TRCamera::AcquisitionAbort), const CommandParameterName>);
    static_assert(std::is_same_v<decltype(TRCamera::PixelFormat), const EnumParameterName>);
    static_assert(std::is_same_v<decltype(TRCamera::ReverseX), const BooleanParameterName>);
    static_assert(std::is_same_v<decltype(TRCamera::DeviceModelName), const StringParameterName>);
    static_assert(std::is_same_v<decltype(TRStream::Width), const IntegerParameterName>);
    EXPECT_EQ(TRCamera::ExposureTime, FloatParameterName("@CameraDevice/ExposureTime"));
    EXPECT_EQ(TRCamera::TriggerSoftware.getFullName(), "@CameraDevice/TriggerSoftware");
    EXPECT_EQ(TRStream::Width.getFullName(), "@StreamGrabber0/Width");
    EXPECT_EQ(TRTransportLayer::PixelFormat.getFullName(), "@DeviceTransportLayer/PixelFormat");
    EXPECT_EQ(Sfnc_2_5_0, QVersionNumber(2, 5, 0));

    // A constant works with a collection exactly like a name built by hand.
    CSimulatedCollection simulated;
    CParameterCollection& collection = simulated.collection();
    EXPECT_EQ(collection.get(TRCamera::Width).data(),
              collection.get(IntegerParameterName("@CameraDevice/Width")).data());
    EXPECT_EQ(collection.get(TRCamera::Width)->getValue(), 640);
}

namespace {

const std::string treeDescription = testDescription(R"(
  <Category Name="Root"><pFeature>Shown</pFeature><pFeature>Secrets</pFeature><pFeature>Gone</pFeature></Category>
  <Category Name="Shown"><DisplayName>Shown Things</DisplayName><pFeature>Go</pFeature><pFeature>Size</pFeature></Category>
  <Category Name="Secrets"><pFeature>Hidden</pFeature><pFeature>Unbuilt</pFeature></Category>
  <Category Name="Gone"><pFeature>Absent</pFeature></Category>
  <Command Name="Go"><Visibility>Expert</Visibility><pValue>Size</pValue><CommandValue>1</CommandValue></Command>
  <Integer Name="Size"><Value>4</Value></Integer>
  <Integer Name="Hidden"><Visibility>Invisible</Visibility><Value>1</Value></Integer>
  <Integer Name="Absent"><pIsImplemented>Zero</pIsImplemented><Value>1</Value></Integer>
  <Integer Name="Unbuilt"><pIsImplemented>Zero</pIsImplemented><Value>1</Value></Integer>
  <Integer Name="Zero"><Value>0</Value></Integer>
  <Port Name="Device"/>
)");

}  // namespace

TEST(NodemapJson, TreeOfVisibleImplementedFeatures) {
    GenApi::CNodeMapRef map;
    map._LoadXMLFromString(treeDescription.c_str());
    const QJsonObject root = CNodemapToJsonConverter::getJson(map._GetNode("Root"));
    EXPECT_EQ(root["identifier"].toString(), "Root");
    EXPECT_EQ(root["type"].toString(), "ICategory");
    const QJsonArray categories = root["children"].toArray();
    // "Gone" holds only a feature that is not implemented, so it is NI itself and dropped.
    ASSERT_EQ(categories.size(), 2);
    const QJsonObject shown = categories[0].toObject();
    EXPECT_EQ(shown["displayName"].toString(), "Shown Things");
    const QJsonArray leaves = shown["children"].toArray();
    ASSERT_EQ(leaves.size(), 2);
    EXPECT_EQ(leaves[0].toObject()["type"].toString(), "ICommnad");
    EXPECT_EQ(leaves[0].toObject()["visibility"].toString(), "Expert");
    // The command reads Size, which is a feature: it appears as the command's child; Size has none.
    const QJsonObject size = leaves[1].toObject();
    EXPECT_EQ(size["identifier"].toString(), "Size");
    EXPECT_FALSE(size.contains("children"));
    // A visible category whose children are invisible or not implemented keeps an empty "children" array.
    const QJsonObject secrets = categories[1].toObject();
    EXPECT_EQ(secrets["identifier"].toString(), "Secrets");
    ASSERT_TRUE(secrets.contains("children"));
    EXPECT_TRUE(secrets["children"].toArray().isEmpty());
    // A node that is no feature gives an empty object.
    EXPECT_TRUE(CNodemapToJsonConverter::getJson(map._GetNode("Zero")).isEmpty());
}

TEST_F(LibraryTest, JsonExportOfTheSimulatedCamera) {
    const QJsonObject root = CNodemapToJsonConverter::getJson(node("Root"));
    const QByteArray text = QJsonDocument(root).toJson(QJsonDocument::Compact);
    EXPECT_TRUE(text.contains("\"identifier\":\"Width\"")) << text.left(200).toStdString();
    EXPECT_TRUE(text.contains("\"type\":\"IEnum\""));
    EXPECT_FALSE(text.contains("\"identifier\":\"WidthReg\""));  // not a feature
    EXPECT_FALSE(text.contains("\"visibility\":\"Invisible\""));
    EXPECT_EQ(CNodemapToJsonConverter::getNodeType(node("AcquisitionStart")), "ICommnad");
    EXPECT_EQ(CNodemapToJsonConverter::getNodeType(node("EnumEntry_PixelFormat_Mono8")), "IEnumEntry");
    EXPECT_EQ(CNodemapToJsonConverter::getNodeType(node("Device")), "IPort");
}

namespace {

const std::string typesDescription = testDescription(R"(
  <Category Name="Root"><pFeature>Kinds</pFeature><pFeature>Veiled</pFeature></Category>
  <Category Name="Kinds">
    <pFeature>AnInteger</pFeature><pFeature>ABoolean</pFeature><pFeature>ACommand</pFeature>
    <pFeature>AFloat</pFeature><pFeature>AString</pFeature><pFeature>ARegister</pFeature>
    <pFeature>AnEnumeration</pFeature><pFeature>Device</pFeature>
  </Category>
  <Category Name="Veiled"><pFeature>Beneath</pFeature></Category>
  <Integer Name="Beneath"><Visibility>Invisible</Visibility><pValue>Shown</pValue></Integer>
  <Integer Name="Shown"><Value>1</Value></Integer>
  <Integer Name="AnInteger"><Visibility>Guru</Visibility><Value>1</Value></Integer>
  <Boolean Name="ABoolean"><pValue>Scratch</pValue></Boolean>
  <Command Name="ACommand"><pValue>Scratch</pValue><CommandValue>1</CommandValue></Command>
  <Integer Name="Scratch"><Value>0</Value></Integer>
  <Float Name="AFloat"><Value>1.5</Value></Float>
  <StringReg Name="AString"><Address>0</Address><Length>8</Length><AccessMode>RW</AccessMode><pPort>Device</pPort></StringReg>
  <Register Name="ARegister"><Address>8</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort></Register>
  <Enumeration Name="AnEnumeration"><EnumEntry Name="One"><Value>1</Value></EnumEntry><Value>1</Value></Enumeration>
  <Node Name="Plain"/>
  <Port Name="Device"/>
)");

}  // namespace

// Every type text, a visibility text, and an invisible category that hides its visible descendants. A
// category is as visible as its most visible feature, so the one below is invisible while the feature
// its invisible feature reads is not.
TEST(NodemapJson, TypeTextsAndAnInvisibleCategoryCuttingOffItsSubtree) {
    CMemoryPort port;
    GenApi::CNodeMapRef map;
    map._LoadXMLFromString(typesDescription.c_str());
    map._Connect(&port, "Device");
    const QJsonObject root = CNodemapToJsonConverter::getJson(map._GetNode("Root"));
    const QJsonArray categories = root["children"].toArray();
    ASSERT_EQ(categories.size(), 1);  // Veiled and everything below it are gone
    const QByteArray text = QJsonDocument(root).toJson(QJsonDocument::Compact);
    EXPECT_FALSE(text.contains("Beneath"));
    EXPECT_FALSE(text.contains("\"Shown\""));

    QMap<QString, QString> types;
    for (const QJsonValue kind : categories[0].toObject()["children"].toArray())
        types.insert(kind.toObject()["identifier"].toString(), kind.toObject()["type"].toString());
    const QMap<QString, QString> expected = {{"AnInteger", "IInteger"},  {"ABoolean", "IBoolean"},
                                             {"ACommand", "ICommnad"},   {"AFloat", "IFloat"},
                                             {"AString", "IString"},     {"ARegister", "IRegister"},
                                             {"AnEnumeration", "IEnum"}, {"Device", "IPort"}};
    EXPECT_EQ(types, expected);
    EXPECT_EQ(categories[0].toObject()["type"].toString(), "ICategory");
    EXPECT_EQ(CNodemapToJsonConverter::getNodeType(map._GetNode("EnumEntry_AnEnumeration_One")),
              "IEnumEntry");
    EXPECT_EQ(CNodemapToJsonConverter::getNodeType(map._GetNode("Plain")), "<unknown-type>");
    EXPECT_EQ(CNodemapToJsonConverter::getNodeVisibility(map._GetNode("AnInteger")), "Guru");
    EXPECT_EQ(CNodemapToJsonConverter::getNodeVisibility(map._GetNode("AFloat")), "Beginner");
}
