// The GenICam base types: gcstring, string vectors, exceptions, locks, enumeration texts and helpers.
#include <Base/GCBase.h>
#include <Base/GCSynch.h>
#include <GenApi/EnumClasses.h>
#include <GenApi/GenApi.h>
#include <gtest/gtest.h>
#include <sstream>
#include <thread>
#include <semaphore.h>
#include <unistd.h>

using GenICam::gcstring;
using GenICam::gcstring_vector;
using namespace GenApi;

TEST(GcString, BehavesLikeStdString) {
    gcstring text("Exposure");
    text += "Time";
    text += '!';
    EXPECT_EQ(text.size(), 13u);
    EXPECT_STREQ(text.c_str(), "ExposureTime!");
    EXPECT_EQ(text.find("Time"), 8u);
    EXPECT_EQ(text.find('x'), 1u);
    EXPECT_EQ(text.find("Gain"), GCSTRING_NPOS);
    EXPECT_EQ(text.find_last_of('e'), 11u);
    EXPECT_STREQ(text.substr(8, 4).c_str(), "Time");
    text.erase(12);
    EXPECT_TRUE(text == "ExposureTime");
    EXPECT_TRUE(gcstring("a") < gcstring("b"));
    EXPECT_STREQ((gcstring("x") + "y" + gcstring("z")).c_str(), "xyz");
    EXPECT_STREQ(gcstring(nullptr).c_str(), "");
    EXPECT_EQ(text[0], 'E');  // through the conversion to const char*
    std::istringstream input("first second\nthird line\n");
    gcstring word, line;
    input >> word;
    GenICam::getline(input, line);
    EXPECT_STREQ(word.c_str(), "first");
    EXPECT_STREQ(line.c_str(), " second");
    std::ostringstream output;
    output << text;
    EXPECT_EQ(output.str(), "ExposureTime");
}

TEST(GcStringVector, StoresIteratesAndSearches) {
    gcstring_vector names;
    names.push_back("Width");
    names.push_back("Height");
    names.insert(names.begin(), "OffsetX");
    EXPECT_EQ(names.size(), 3u);
    EXPECT_TRUE(names.contains("Height"));
    EXPECT_FALSE(names.contains("Gain"));
    std::string joined;
    for (gcstring_vector::const_iterator it = names.begin(); it != names.end(); ++it)
        joined += it->c_str();
    EXPECT_EQ(joined, "OffsetXWidthHeight");
    names.erase(names.begin() + 1);
    EXPECT_STREQ(names.at(1).c_str(), "Height");
    EXPECT_THROW(names.at(5), std::out_of_range);
    names.resize(4, "Gain");
    EXPECT_STREQ(names.back().c_str(), "Gain");
}

TEST(GenICamExceptions, KeepTheDescriptionApartFromTheMessage) {
    try {
        throw OUT_OF_RANGE_EXCEPTION("Value = %d too big", 5);
    } catch (const GenICam::GenericException& e) {
        EXPECT_STREQ(e.GetDescription(), "Value = 5 too big");
        EXPECT_NE(std::string(e.what()).find("OutOfRangeException"), std::string::npos);
        EXPECT_NE(std::string(e.what()).find("Value = 5 too big"), std::string::npos);
        EXPECT_GT(e.GetSourceLine(), 0u);
    }
    // GenICam exceptions are no standard exceptions.
    bool caughtAsStd = false;
    try {
        throw RUNTIME_EXCEPTION("x");
    } catch (const std::exception&) {
        caughtAsStd = true;
    } catch (const GenICam::GenericException&) {
    }
    EXPECT_FALSE(caughtAsStd);
    EXPECT_THROW(GenICam::INTEGRAL_CAST<int32_t>(int64_t(1) << 40), GenICam::RuntimeException);
    EXPECT_THROW(GenICam::INTEGRAL_CAST<uint32_t>(int64_t(-1)), GenICam::RuntimeException);
    EXPECT_EQ(GenICam::INTEGRAL_CAST<int32_t>(int64_t(-5)), -5);
    auto checkRange = [](int64_t v) { CHECK_RANGE_I64(v, 0, 100, 10); };
    EXPECT_NO_THROW(checkRange(30));
    EXPECT_THROW(checkRange(35), GenICam::OutOfRangeException);
    EXPECT_THROW(checkRange(110), GenICam::OutOfRangeException);
}

TEST(EnumerationTexts, ConvertBothWays) {
    EXPECT_STREQ(EAccessModeClass::ToString(RW).c_str(), "RW");
    EXPECT_STREQ(EAccessModeClass::ToString(_UndefinedAccesMode).c_str(), "_UndefinedAccessMode");
    EXPECT_STREQ(EVisibilityClass::ToString(Guru).c_str(), "Guru");
    EXPECT_STREQ(ERepresentationClass::ToString(HexNumber).c_str(), "HexNumber");
    EXPECT_STREQ(EDisplayNotationClass::ToString(fnScientific).c_str(), "Scientific");
    EXPECT_STREQ(ECachingModeClass::ToString(static_cast<ECachingMode>(42)).c_str(), "_UndefinedCachingMode");
    EVisibility visibility = Beginner;
    EXPECT_TRUE(EVisibilityClass::FromString("Expert", &visibility));
    EXPECT_EQ(visibility, Expert);
    EXPECT_FALSE(EVisibilityClass::FromString("expert", &visibility));
    EXPECT_FALSE(EVisibilityClass::FromString("_UndefinedVisibility", &visibility));
    EXPECT_EQ(visibility, Expert);
    EXPECT_FALSE(EVisibilityClass::FromString("Guru", nullptr));
    gcstring text;
    EXPECT_THROW(EYesNoClass::ToString(text, nullptr), GenICam::InvalidArgumentException);
    EXPECT_EQ(static_cast<int>(_UndefinedVisibility), 99);
    EXPECT_EQ(static_cast<int>(intfIPort), 11);
}

TEST(AccessHelpers, CombineLikeGenApi) {
    EXPECT_EQ(Combine(RW, RO), RO);
    EXPECT_EQ(Combine(RO, WO), NA);
    EXPECT_EQ(Combine(NA, NI), NI);
    EXPECT_EQ(Combine(WO, RW), WO);
    EXPECT_EQ(Combine(Beginner, Guru), Guru);
    EXPECT_EQ(Combine(WriteThrough, NoCache), NoCache);
    EXPECT_TRUE(IsVisible(Expert, Guru));
    EXPECT_FALSE(IsVisible(Guru, Expert));
    EXPECT_FALSE(IsReadable(static_cast<const IBase*>(nullptr)));
    EXPECT_TRUE(IsAvailable(RO));
    EXPECT_FALSE(IsImplemented(NI));
}

TEST(Locks, AreRecursiveAndExclusive) {
    GenApi::CLock lock;
    lock.Lock();
    EXPECT_TRUE(lock.TryLock());  // the same thread enters again
    bool otherThreadEntered = true;
    std::thread([&] { otherThreadEntered = lock.TryLock(); }).join();
    EXPECT_FALSE(otherThreadEntered);
    lock.Unlock();
    lock.Unlock();
    std::thread([&] {
        otherThreadEntered = lock.TryLock();
        if (otherThreadEntered)
            lock.Unlock();
    }).join();
    EXPECT_TRUE(otherThreadEntered);
    GenICam::CLock baseLock;
    { GenICam::AutoLock guard(baseLock); }
    EXPECT_TRUE(baseLock.TryLock());
    baseLock.Unlock();
}

TEST(Containers, NodeAndValueVectorsAndAutovectors) {
    node_vector nodes(2);
    EXPECT_EQ(nodes.size(), 2u);
    nodes.resize(3);
    EXPECT_EQ(nodes[2], nullptr);
    value_vector values;
    values.resize(2, nullptr);
    EXPECT_EQ(values.size(), 2u);
    EXPECT_EQ(std::distance(values.begin(), values.end()), 2);
    int64_autovector_t a(3);
    a[0] = 7;
    int64_autovector_t b(a);
    b[1] = 8;  // copies share their storage
    EXPECT_EQ(a[1], 8);
    EXPECT_EQ(b[0], 7);
}

TEST(Locks, NamedGlobalLocksAreSharedByName) {
    const std::string name = "ParameterCollectionTest/" + std::to_string(::getpid());
    GenICam::CGlobalLock first(name.c_str());
    GenICam::CGlobalLock second{GenICam::gcstring(name.c_str())};
    ASSERT_TRUE(first.IsValid());
    EXPECT_TRUE(first.Lock(100));
    EXPECT_FALSE(second.TryLock());  // the same lock under the same name
    EXPECT_FALSE(second.Lock(20));
    {
        GenICam::CGlobalLockUnlocker unlocker(first);
        unlocker.UnlockEarly();
        EXPECT_TRUE(second.TryLock());
    }
    second.Unlock();
    sem_unlink(
        ("/ParameterCollectionTest_" + std::to_string(::getpid())).c_str());  // the lock outlives processes
}
