// Feature bags on the simulated camera: storing with selectors, round trips, order-dependent loading, bad
// streams, and the streams GenApi wrote for real descriptions.
#include "MemoryDescriptions.h"
#include "SimulatedCameraFixture.h"
#include <GenApi/Persistence.h>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

using namespace GenApi;
using GenICam::gcstring;
using GenICam::gcstring_vector;

namespace {

std::string storedText(INodeMap* map) {
    CFeatureBag bag;
    bag.StoreToBag(map);
    return bag.ToString().c_str();
}

CFeatureBag parsed(const std::string& text) {
    std::istringstream stream(text);
    CFeatureBag bag;
    stream >> bag;
    return bag;
}

const std::string magic = "# " GENAPI_PERSISTENCE_MAGIC "\n";

}  // namespace

TEST_F(SimulatedCameraTest, StoresEverySelectorCombinationAndTheShortestFloats) {
    CEnumerationPtr(map()->GetNode("GainSelector"))->FromString("Red");
    CFloatPtr(map()->GetNode("Gain"))->SetValue(6.0);
    CEnumerationPtr(map()->GetNode("GainSelector"))->FromString("Green");
    CFloatPtr(map()->GetNode("ExposureTime"))->SetValue(12345.6789012345);
    const std::string text = storedText(map());
    EXPECT_EQ(text.rfind(magic, 0), 0u);
    EXPECT_NE(text.find("\nGain\t{GainSelector=Red}\t6\n"), std::string::npos) << text;
    EXPECT_NE(text.find("\nGain\t{GainSelector=All}\t0\n"), std::string::npos);
    // After the selected feature, its selector comes back to the value it had.
    EXPECT_NE(text.find("{GainSelector=Blue}\t0\nGainSelector\tGreen\n"), std::string::npos);
    EXPECT_EQ(CEnumerationPtr(map()->GetNode("GainSelector"))->ToString(), "Green");
    // The float reads back to the very same double.
    const size_t at = text.find("\nExposureTime\t");
    ASSERT_NE(at, std::string::npos);
    const double saved = std::strtod(text.c_str() + at + 14, nullptr);
    EXPECT_EQ(saved, CFloatPtr(map()->GetNode("ExposureTime"))->GetValue());
    EXPECT_EQ(text.find("SensorWidth"), std::string::npos);  // read-only
    EXPECT_EQ(text.find("WidthReg"), std::string::npos);     // not streamable

    // With a filter and a limit.
    CFeatureBag some;
    gcstring_vector filter;
    filter.push_back("Width");
    filter.push_back("Height");
    EXPECT_EQ(some.StoreToBag(map(), -1, &filter), 2);
    CFeatureBag one;
    EXPECT_EQ(one.StoreToBag(map(), 1), 1);
}

TEST_F(SimulatedCameraTest, LoadingRestoresEveryValueAndRetriesOrderDependentEntries) {
    CIntegerPtr(map()->GetNode("Width"))->SetValue(1024);
    CEnumerationPtr(map()->GetNode("GainSelector"))->FromString("Blue");
    CFloatPtr(map()->GetNode("Gain"))->SetValue(3.5);
    CStringPtr(map()->GetNode("DeviceUserID"))->SetValue("cam one");
    const std::string first = storedText(map());

    SimCamera::CSimulatedDevice other;
    CFeatureBag bag = parsed(first);
    gcstring_vector errors;
    EXPECT_TRUE(bag.LoadFromBag(other.nodeMap(), true, &errors)) << (errors.empty() ? "" : errors[0].c_str());
    EXPECT_EQ(storedText(other.nodeMap()), first);

    // Width 2048 fits only once OffsetX is 0: the first pass refuses it, the second takes it.
    CIntegerPtr(map()->GetNode("Width"))->SetValue(1024);
    CIntegerPtr(map()->GetNode("OffsetX"))->SetValue(1024);
    CFeatureBag ordered = parsed(magic + "Width\t2048\nOffsetX\t0\n");
    EXPECT_TRUE(ordered.LoadFromBag(map(), true, nullptr));
    EXPECT_EQ(CIntegerPtr(map()->GetNode("Width"))->GetValue(), 2048);
}

TEST_F(SimulatedCameraTest, BadStreamsAreReportedByLineOrFeatureAndTheRestIsApplied) {
    auto descriptionOfRead = [](const std::string& text) {
        return descriptionOf<GenICam::RuntimeException>([&] { parsed(text); });
    };
    EXPECT_EQ(descriptionOfRead(""), "The stream is eof");
    EXPECT_EQ(
        descriptionOfRead("Width\t64\n"),
        "The stream is not a GenApi feature stream since it is missing the magic GUID in the first line");
    EXPECT_EQ(descriptionOfRead("# " GENAPI_PERSISTENCE_MAGIC_FEATUREBAGGER "\n"),
              "The stream has been created using the CFeatureBagger class thus must be restored using the "
              "CFeatureBagger class as well");
    EXPECT_EQ(descriptionOfRead(magic + "Width 64\n"), "The stream holds incomplete key - value - set");
    EXPECT_EQ(descriptionOfRead(magic + "Gain\t{GainSelector=Red\n"),
              "The stream holds incomplete key - value - set");

    // CRLF line ends and a truncated last line still read.
    const CFeatureBag crlf = parsed(magic.substr(0, magic.size() - 1) + "\r\nWidth\t320\r\nHeight\t24");
    ASSERT_EQ(crlf.entries().size(), 2u);
    EXPECT_EQ(crlf.entries()[0].value, "320");
    EXPECT_EQ(crlf.entries()[1].value, "24");

    // Unknown feature, wrong type, out of range, unknown selector value, an oversized value: each error
    // names its feature, and everything else is applied.
    const std::string huge(1 << 20, 'x');
    CFeatureBag mixed = parsed(magic +
                               "NoSuchFeature\t1\nWidth\tabc\nHeight\t4096\nGain\t{GainSelector=Purple}\t1\n"
                               "DeviceUserID\t" +
                               huge + "\nOffsetY\t16\nTestPattern\tGreyVerticalRamp\n");
    gcstring_vector errors;
    EXPECT_FALSE(mixed.LoadFromBag(map(), true, &errors));
    std::string joined;
    for (const gcstring& error : errors)
        joined += std::string(error.c_str()) + "\n";
    for (const char* name : {"NoSuchFeature", "Width", "Height", "Gain", "DeviceUserID"})
        EXPECT_NE(joined.find(name), std::string::npos) << name << " in\n" << joined;
    EXPECT_EQ(CIntegerPtr(map()->GetNode("OffsetY"))->GetValue(), 16);
    EXPECT_EQ(CEnumerationPtr(map()->GetNode("TestPattern"))->ToString(), "GreyVerticalRamp");
    // Without an error list the first failure is thrown.
    EXPECT_THROW(parsed(magic + "NoSuchFeature\t1\n").LoadFromBag(map(), true, nullptr),
                 GenICam::RuntimeException);
}

TEST(PersistenceBagger, BagsOfANodeMapRoundTrip) {
    SimCamera::CSimulatedDevice device;
    CFeatureBagger bagger;
    bagger.SetInfo("simulated camera");
    EXPECT_EQ(bagger.Bag(device.nodeMap()), 1u);
    EXPECT_STREQ(bagger.at(0).GetBagName().c_str(), "All");
    std::stringstream text;
    text << bagger;
    EXPECT_NE(text.str().find("[All]\n# " GENAPI_PERSISTENCE_MAGIC), std::string::npos);
    CFeatureBagger back;
    text >> back;
    ASSERT_EQ(back.size(), 1u);
    EXPECT_TRUE(back.at(0) == bagger.at(0));
    EXPECT_TRUE(back.UnBag(device.nodeMap()));
}

namespace {

// The description of that name beside the checkout, every port over its own memory.
SDescriptionInMemory describedCamera(const std::string& name, bool seeded) {
    return SDescriptionInMemory(fileText(std::string(PC_CAMERA_DESCRIPTIONS) + "/" + name + ".xml"), seeded);
}

// Moves a number one step away from its value, inside its limits; false when it has nowhere to go.
template <typename T>
bool stepped(T value, T minimum, T maximum, T step, T& next) {
    if (step > 0 && value <= maximum - step)
        next = value + step;
    else if (step > 0 && value >= minimum + step)
        next = value - step;
    else
        return false;
    return next >= minimum && next <= maximum;
}

// The same for integers, with distances taken unsigned so that no limit of the 64-bit range overflows.
// One increment up, or down where the feature (or the node its value goes to, whose limits may be
// narrower) refuses the step up.
bool changeInteger(CIntegerPtr feature) {
    const int64_t value = feature->GetValue(), minimum = feature->GetMin(), maximum = feature->GetMax();
    const uint64_t step = static_cast<uint64_t>(feature->GetInc());
    if (value < minimum || value > maximum || step == 0)
        return false;
    auto tryValue = [&](uint64_t next) {
        try {
            feature->SetValue(static_cast<int64_t>(next));
            return true;
        } catch (const GenICam::OutOfRangeException&) {
            return false;
        }
    };
    const bool up = static_cast<uint64_t>(maximum) - static_cast<uint64_t>(value) >= step;
    const bool down = static_cast<uint64_t>(value) - static_cast<uint64_t>(minimum) >= step;
    return (up && tryValue(static_cast<uint64_t>(value) + step)) ||
           (down && tryValue(static_cast<uint64_t>(value) - step));
}

bool changeFloat(CFloatPtr feature) {
    const double value = feature->GetValue(), minimum = feature->GetMin(), maximum = feature->GetMax();
    double next = 0;
    if (feature->HasInc())
        return stepped(value, minimum, maximum, feature->GetInc(), next) && (feature->SetValue(next), true);
    next = value < maximum ? value + (maximum - value) / 3 : value - (value - minimum) / 3;
    if (next == value || !(next >= minimum && next <= maximum))
        return false;
    feature->SetValue(next);
    return true;
}

bool changeEnumeration(CEnumerationPtr feature) {
    const std::string current = feature->ToString().c_str();
    NodeList_t entries;
    feature->GetEntries(entries);
    for (INode* node : entries) {
        CEnumEntryPtr entry(node);
        if (IsAvailable(entry) && current != entry->GetSymbolic().c_str()) {
            feature->SetIntValue(entry->GetValue());
            return true;
        }
    }
    return false;
}

// What a register space holds for a stored feature: a valid value, an invalid one that was replaced, or
// limits that leave no valid value at all (a maximum below the minimum).
enum class ESettling { valid, replaced, impossible };

// Writes the minimum to a number the register space left outside its limits or off its increment; a
// register too narrow to hold the minimum leaves the feature without a valid value.
template <typename TPtr>
ESettling settleNumber(TPtr feature, bool (*valid)(TPtr)) {
    if (feature->GetMin() > feature->GetMax())
        return ESettling::impossible;
    if (valid(feature))
        return ESettling::valid;
    feature->SetValue(feature->GetMin());
    return valid(feature) ? ESettling::replaced : ESettling::impossible;
}

// The distance to the minimum is taken unsigned: limits may span the whole 64-bit range.
bool validInteger(CIntegerPtr feature) {
    const int64_t value = feature->GetValue(), minimum = feature->GetMin();
    const uint64_t distance = static_cast<uint64_t>(value) - static_cast<uint64_t>(minimum);
    return value >= minimum && value <= feature->GetMax() &&
           distance % static_cast<uint64_t>(feature->GetInc()) == 0;
}

bool validFloat(CFloatPtr feature) {
    const double value = feature->GetValue();
    return value >= feature->GetMin() && value <= feature->GetMax();
}

// Chooses the first available entry for an enumeration whose value matches no available entry.
ESettling settleEnumeration(CEnumerationPtr feature) {
    if (IsAvailable(feature->GetCurrentEntry()))
        return ESettling::valid;
    NodeList_t entries;
    feature->GetEntries(entries);
    for (INode* node : entries) {
        if (IsAvailable(node)) {
            feature->SetIntValue(CEnumEntryPtr(node)->GetValue());
            return ESettling::replaced;
        }
    }
    return ESettling::impossible;
}

// Selects the entry's selector values and answers its feature.
INode* selectedFeature(INodeMap* map, const CFeatureBag::SEntry& entry) {
    for (const auto& selector : entry.selectors)
        CValuePtr(map->GetNode(selector.first.c_str()))->FromString(selector.second.c_str());
    return map->GetNode(entry.name.c_str());
}

ESettling settleEntry(INodeMap* map, const CFeatureBag::SEntry& entry) {
    try {
        INode* node = selectedFeature(map, entry);
        switch (node->GetPrincipalInterfaceType()) {
            case intfIInteger:
                return settleNumber<CIntegerPtr>(node, validInteger);
            case intfIFloat:
                return settleNumber<CFloatPtr>(node, validFloat);
            case intfIEnumeration:
                return settleEnumeration(node);
            default:
                return ESettling::valid;
        }
    } catch (const GenICam::GenericException&) {
        return ESettling::impossible;
    }
}

CFeatureBag stored(INodeMap* map, const std::set<std::string>& excluded) {
    CFeatureBag all;
    all.StoreToBag(map);
    gcstring_vector allowed;
    for (const CFeatureBag::SEntry& entry : all.entries())
        if (!excluded.count(entry.name))
            allowed.push_back(entry.name.c_str());
    CFeatureBag bag;
    bag.StoreToBag(map, -1, &allowed);
    return bag;
}

// Brings the register space to a state a camera could hold: every stored feature at a valid value, and
// loading its own stream changes nothing (features that share a register agree). Features the register
// space gives no valid value are left out of the stream and counted. Registers that share bytes without a
// link in the description each keep their own copy, as in GenApi, so the stream is taken from what the
// device holds once every copy is dropped.
CFeatureBag settled(INodeMap* map, std::set<std::string>& impossible) {
    CFeatureBag bag;
    for (int pass = 0; pass < 4; ++pass) {
        map->InvalidateNodes();
        bag = stored(map, impossible);
        size_t replaced = 0;
        for (const CFeatureBag::SEntry& entry : bag.entries()) {
            const ESettling settling = settleEntry(map, entry);
            replaced += settling == ESettling::replaced;
            if (settling == ESettling::impossible)
                impossible.insert(entry.name);
        }
        if (replaced == 0)
            break;
    }
    bag = stored(map, impossible);
    gcstring_vector refused;
    bag.LoadFromBag(map, false, &refused);
    map->InvalidateNodes();
    return stored(map, impossible);
}

// Writes another valid value to a stored feature under the entry's selector values.
bool changeEntry(INodeMap* map, const CFeatureBag::SEntry& entry) {
    try {
        INode* node = selectedFeature(map, entry);
        switch (node->GetPrincipalInterfaceType()) {
            case intfIInteger:
                return changeInteger(node);
            case intfIFloat:
                return changeFloat(node);
            case intfIEnumeration:
                return changeEnumeration(node);
            case intfIBoolean:
                CBooleanPtr(node)->SetValue(!CBooleanPtr(node)->GetValue());
                return true;
            case intfIString:
                CStringPtr(node)->SetValue(entry.value == "rt" ? "tr" : "rt");
                return true;
            default:
                return false;
        }
    } catch (const GenICam::GenericException&) {
        return false;
    }
}

// An entry's feature with its selector values.
std::string entryKey(const CFeatureBag::SEntry& entry) {
    std::string key = entry.name;
    for (const auto& selector : entry.selectors)
        key += "\t" + selector.first + "=" + selector.second;
    return key;
}

// Entries of the first bag whose feature the other stores with another value (or not at all).
size_t differingEntries(const CFeatureBag& one, const CFeatureBag& other) {
    std::map<std::string, std::string> values;
    for (const CFeatureBag::SEntry& entry : other.entries())
        values[entryKey(entry)] = entry.value;
    size_t count = 0;
    for (const CFeatureBag::SEntry& entry : one.entries()) {
        const auto found = values.find(entryKey(entry));
        count += found == values.end() || found->second != entry.value;
    }
    return count;
}

}  // namespace

// Save, change every saved feature, load, save again: the texts are identical, selected values included.
TEST(PersistenceOfRealDescriptions, EveryStoredValueSurvivesARoundTrip) {
    const std::vector<std::string> paths =
        describedCameraPaths({PC_CAMERA_DESCRIPTIONS, PC_MORE_CAMERA_DESCRIPTIONS});
    if (paths.empty())
        GTEST_SKIP() << "no camera descriptions in " << PC_CAMERA_DESCRIPTIONS;
    for (const std::string& path : paths) {
        const std::string name = describedCameraName(path);
        SCOPED_TRACE(name);
        SDescriptionInMemory camera(fileText(path), true);
        std::set<std::string> impossible;
        CFeatureBag saved = settled(camera.map._Ptr, impossible);
        const std::string savedText = saved.ToString().c_str();

        size_t changed = 0;
        for (const CFeatureBag::SEntry& entry : saved.entries())
            changed += changeEntry(camera.map._Ptr, entry);
        // A change may make further features available, so the bags are compared feature by feature.
        CFeatureBag altered = stored(camera.map._Ptr, impossible);
        const size_t differing = differingEntries(saved, altered);

        gcstring_vector errors;
        camera.map._Ptr->InvalidateNodes();
        CFeatureBag(saved).LoadFromBag(camera.map._Ptr, true, &errors);
        CFeatureBag restored = stored(camera.map._Ptr, impossible);
        EXPECT_EQ(std::string(restored.ToString().c_str()), savedText);
        EXPECT_TRUE(errors.empty()) << errors.size() << " refused, first: " << errors[0];
        std::printf(
            "[ %s ] %zu entries, %zu changed, %zu differed before loading, %zu without a valid value\n",
            name.c_str(), saved.entries().size(), changed, differing, impossible.size());
        // Only selectors with one value and numbers whose limits meet cannot move, and features that
        // share a register with others the description does not link to them (the fields of one GigE
        // Vision stream channel register) lose their change to the next write there, which writes the
        // bytes its own register kept, as in GenApi.
        // (A stream of a few entries may hold none that can move: a lone selector, say.)
        EXPECT_GE(differing * 10, changed * 8);
        if (saved.entries().size() >= 4) {
            EXPECT_GE(changed * 2, saved.entries().size()) << "the change touched too few entries";
        }
    }
}

TEST(PersistenceOfRealDescriptions, StreamsGenApiWroteAreRead) {
    const std::string expected = std::string(PC_CAMERA_DESCRIPTIONS) + "/../conformance/expected";
    DIR* folder = opendir(expected.c_str());
    if (!folder)
        GTEST_SKIP() << "no conformance streams in " << expected;
    std::vector<std::string> names;
    while (dirent* entry = readdir(folder)) {
        const std::string file = entry->d_name;
        if (file.size() > 8 && file.compare(file.size() - 8, 8, ".bag.txt") == 0)
            names.push_back(file.substr(0, file.size() - 8));
    }
    closedir(folder);
    ASSERT_FALSE(names.empty());
    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        std::ifstream file(expected + "/" + name + ".bag.txt");
        CFeatureBag bag;
        file >> bag;
        SDescriptionInMemory camera = describedCamera(name, true);
        CNodeMapRef& map = camera.map;
        gcstring_vector errors;
        bag.LoadFromBag(map._Ptr, false, &errors);
        // Values the reference wrote under other limits may be refused, each by name; most entries apply.
        for (const gcstring& error : errors)
            EXPECT_NE(std::string(error.c_str()).find(" : "), std::string::npos) << error;
        EXPECT_LE(errors.size() * 3, bag.entries().size() + 2) << "too many refusals";
        CFeatureBag again;
        again.StoreToBag(map._Ptr);
        EXPECT_TRUE(parsed(again.ToString().c_str()) == again);
    }
}
