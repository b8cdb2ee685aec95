// Metadata of nodes by key on integer, float, boolean, enumeration and category nodes.
#include "LibraryFixture.h"
#include <QSignalSpy>
#include <GenApi/GenApi.h>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Core::Exception;

class AdvancedAccessTest : public LibraryTest {
protected:
    QSharedPointer<IAdvancedParameterAccess> access(const char* name) {
        m_Parameters.append(parameter(name));
        return m_Parameters.last()->getAdvancedParameterAccess();
    }

private:
    QVector<QSharedPointer<CParameter>> m_Parameters;
};

TEST_F(AdvancedAccessTest, KeysOfAnIntegerNode) {
    auto width = access("Width");
    EXPECT_EQ(width->getProperty("Description"),
              "Width of the region of interest. Its maximum shrinks as OffsetX grows.");
    EXPECT_EQ(width->getProperty("ShortDescription"),
              "Width of the image provided by the device, in pixels.");
    EXPECT_EQ(width->getProperty("Tooltip"), width->getProperty("ShortDescription"));
    EXPECT_EQ(width->getProperty("DisplayName"), "Width");
    EXPECT_EQ(width->getProperty("DocuURL"), "");
    EXPECT_EQ(width->getProperty("IsDeprecated"), "false");
    EXPECT_EQ(width->getProperty("Visibility"), "Beginner");
    EXPECT_EQ(width->getProperty("Namespace"), "Standard");
    EXPECT_EQ(width->getProperty("IsCacheable"), "true");
    EXPECT_EQ(width->getProperty("IsAccessModeCacheable"), "Yes");
    EXPECT_EQ(width->getProperty("CachingMode"), "WriteThrough");
    EXPECT_EQ(width->getProperty("PollingTime"), "-1");
    EXPECT_EQ(width->getProperty("DevicePortName"), "Device");
    EXPECT_EQ(width->getProperty("EventID"), "");
    EXPECT_EQ(width->getProperty("IsStreamable"), "true");
    EXPECT_EQ(width->getProperty("AccessMode"), "RW");
    EXPECT_EQ(width->getProperty("IsFeature"), "true");
    EXPECT_EQ(width->getProperty("PrincipalInterfaceType"), "intfIInteger");
    EXPECT_EQ(width->getProperty("Representation"), "Linear");
    EXPECT_EQ(width->getProperty("Unit"), "px");
    // Contained for integers, yet empty: the asymmetry is deliberate.
    EXPECT_TRUE(width->containsProperty("DisplayPrecision"));
    EXPECT_EQ(width->getProperty("DisplayPrecision"), "");
    EXPECT_FALSE(width->containsProperty("DisplayNotation"));
    EXPECT_EQ(width->getProperty("DisplayNotation"), "");
    // Keys are case-sensitive.
    EXPECT_FALSE(width->containsProperty("visibility"));
    EXPECT_EQ(messageOf<OperationNotSupportedException>([&] { width->getProperty("visibility"); }),
              "The property key visibility is not available.");
    EXPECT_EQ(width->getPropertyOrDefault("visibility", "fallback"), "fallback");
    EXPECT_EQ(width->getPropertyOrDefault("Unit", "fallback"), "px");
}

TEST_F(AdvancedAccessTest, KeysOfFloatBooleanEnumerationAndCategoryNodes) {
    auto exposure = access("ExposureTime");
    EXPECT_EQ(exposure->getProperty("PrincipalInterfaceType"), "intfIFloat");
    EXPECT_EQ(exposure->getProperty("Representation"), "Logarithmic");
    EXPECT_EQ(exposure->getProperty("DisplayNotation"), "Fixed");
    EXPECT_EQ(exposure->getProperty("DisplayPrecision"), "1");
    EXPECT_EQ(exposure->getProperty("Unit"), "us");
    EXPECT_EQ(exposure->getProperty("DocuURL"), "http://www.emva.org/standards-technology/genicam/");
    EXPECT_TRUE(exposure->containsProperty("DisplayNotation"));

    auto reverse = access("ReverseX");
    EXPECT_EQ(reverse->getProperty("PrincipalInterfaceType"), "intfIBoolean");
    EXPECT_FALSE(reverse->containsProperty("Unit"));
    EXPECT_EQ(reverse->getProperty("Unit"), "");

    auto temperature = access("DeviceTemperature");
    EXPECT_EQ(temperature->getProperty("PollingTime"), "-1");  // polled through its register
    EXPECT_EQ(access("DeviceTemperatureRaw")->getProperty("PollingTime"), "1000");
    EXPECT_EQ(temperature->getProperty("CachingMode"), "NoCache");
    EXPECT_EQ(temperature->getProperty("IsCacheable"), "false");
    EXPECT_EQ(temperature->getProperty("Visibility"), "Expert");
    EXPECT_EQ(temperature->getProperty("AccessMode"), "RO");

    auto pixelFormat = access("PixelFormat");
    EXPECT_EQ(pixelFormat->getProperty("PrincipalInterfaceType"), "intfIEnumeration");
    EXPECT_FALSE(pixelFormat->containsProperty("Representation"));
    auto category = access("TestControl");
    EXPECT_EQ(category->getProperty("PrincipalInterfaceType"), "intfICategory");
    EXPECT_EQ(category->getProperty("Namespace"), "Custom");
    // A category is as visible as its most visible feature, whatever it states itself (Guru here).
    EXPECT_EQ(category->getProperty("Visibility"), "Beginner");
    EXPECT_EQ(category->getProperty("AccessMode"), "RO");
    EXPECT_EQ(access("TestReadOnlyInteger")->getProperty("Namespace"), "Custom");
    EXPECT_EQ(access("EventExposureEnd")->getProperty("EventID"), "9001");
    EXPECT_EQ(access("ExposureTimeAbs")->getProperty("IsDeprecated"), "true");
    EXPECT_EQ(access("WidthReg")->getProperty("IsFeature"), "false");
    EXPECT_EQ(access("EnumEntry_PixelFormat_Mono8")->getProperty("PrincipalInterfaceType"), "intfIEnumEntry");
    EXPECT_EQ(access("Device")->getProperty("PrincipalInterfaceType"), "intfIPort");
}

TEST_F(AdvancedAccessTest, RawPropertiesAsJson) {
    auto width = access("Width");
    EXPECT_FALSE(width->containsProperty("DebugGenApiNodeProperties"));
    EXPECT_EQ(width->getPropertyOrDefault("DebugGenApiNodeProperties", "d"), "d");
    const QJsonDocument document =
        QJsonDocument::fromJson(width->getProperty("DebugGenApiNodeProperties").toUtf8());
    ASSERT_TRUE(document.isArray());
    QMap<QString, QJsonObject> byName;
    for (const QJsonValue& value : document.array())
        byName[value.toObject()["name"].toString()] = value.toObject();
    ASSERT_TRUE(byName.contains("pMax"));
    EXPECT_EQ(byName["pMax"]["isPointer"].toString(), "true");
    EXPECT_EQ(byName["pMax"]["values"].toArray().at(0).toString(), "WidthMax");
    EXPECT_EQ(byName["Min"]["isPointer"].toString(), "false");
    EXPECT_EQ(byName["Min"]["value"].toString(), "16");
    EXPECT_EQ(byName["Min"]["attribute"].toString(), "");
    // Several occurrences and their attributes split at tabs.
    const QJsonDocument knife =
        QJsonDocument::fromJson(access("WidthMax")->getProperty("DebugGenApiNodeProperties").toUtf8());
    for (const QJsonValue& value : knife.array()) {
        const QJsonObject property = value.toObject();
        if (property["name"].toString() != "pVariable")
            continue;
        EXPECT_EQ(property["values"].toArray(), QJsonArray({"OffsetXReg", "SensorWidth"}));
        EXPECT_EQ(property["attributes"].toArray(), QJsonArray({"OX", "SW"}));
    }
}

TEST_F(AdvancedAccessTest, ImposingVisibilityAndAccessModeActsOnTheNode) {
    QSharedPointer<CParameter> width = parameter("Width");
    auto properties = width->getAdvancedParameterAccess();
    properties->setProperty("Visibility", "Guru");
    EXPECT_EQ(map()->GetNode("Width")->GetVisibility(), GenApi::Guru);
    EXPECT_EQ(width->getVisibility(), 2);
    properties->setProperty("AccessMode", "RO");
    EXPECT_EQ(map()->GetNode("Width")->GetAccessMode(), GenApi::RO);
    EXPECT_FALSE(width->isWriteable());
    EXPECT_THROW(width->parseAndSetValue("320"), InvalidOperationException);
    properties->setProperty("AccessMode", "RW");
    EXPECT_TRUE(width->isWriteable());

    EXPECT_EQ(messageOf<ArgumentException>([&] { properties->setProperty("Visibility", "beginner"); }),
              "Visibility value beginner not supported.");
    EXPECT_EQ(messageOf<ArgumentException>([&] { properties->setProperty("AccessMode", "ReadWrite"); }),
              "Access mode value ReadWrite not supported.");
    EXPECT_EQ(messageOf<OperationNotSupportedException>([&] { properties->setProperty("Description", "x"); }),
              "The property key Description is not available or not writable.");
    EXPECT_EQ(messageOf<ArgumentException>([&] { properties->setProperty("", "x"); }),
              "CAdvancedParameterAccess::setProperty(): Key is empty");
    EXPECT_EQ(messageOf<ArgumentException>([&] { properties->getProperty(""); }),
              "CAdvancedParameterAccess::getProperty(): Key is empty.");
}

TEST_F(AdvancedAccessTest, DetachedClosedAndDisposedParents) {
    QSharedPointer<CParameter> lonely = parameter("Width", false);
    auto properties = lonely->getAdvancedParameterAccess();
    EXPECT_FALSE(properties->containsProperty("Description"));
    EXPECT_EQ(messageOf<ArgumentException>([&] { properties->getProperty("Description"); }),
              "CAdvancedParameterAccess::getProperty(): Key is empty.");
    EXPECT_NO_THROW(properties->refresh());
    // Without a node the value is still judged first; only an accepted value needs the node.
    EXPECT_EQ(messageOf<ArgumentException>([&] { properties->setProperty("Visibility", "beginner"); }),
              "Visibility value beginner not supported.");
    EXPECT_EQ(messageOf<ArgumentException>([&] { properties->setProperty("AccessMode", "rw"); }),
              "Access mode value rw not supported.");
    EXPECT_EQ(messageOf<OperationNotSupportedException>([&] { properties->setProperty("Unit", "ms"); }),
              "The property key Unit is not available or not writable.");
    EXPECT_EQ(messageOf<InvalidOperationException>([&] { properties->setProperty("Visibility", "Guru"); }),
              "Node is empty.");

    // Refresh invalidates the node, which GenApi reports through the node's callback. Whether the next
    // read goes to the device is GenApi's cache rule for the registers behind the node, not the library's.
    QSharedPointer<CParameter> width = parameter("Width");
    EXPECT_EQ(width->toString(), "640");
    QSignalSpy invalidated(width.data(), &IParameter::parameterChanged);
    width->getAdvancedParameterAccess()->refresh();
    EXPECT_GE(invalidated.count(), 1);

    auto attached = width->getAdvancedParameterAccess();
    state().setState(ObjectState_Disposed);
    EXPECT_EQ(messageOf<ObjectDisposedException>([&] { attached->getProperty("Unit"); }),
              "The parent object of the parameter has been disposed.");
    EXPECT_TRUE(attached->containsProperty("Unit"));  // no state check here

    // Closed with the parameter detached after having been attached: the parent is closed.
    state().setState(ObjectState_Closed);
    QSharedPointer<CAdvancedParameterAccess> direct(new CAdvancedParameterAccess(sharedState()));
    direct->attach(nullptr, true);
    EXPECT_EQ(messageOf<ObjectDisposedException>([&] { direct->setProperty("Visibility", "Guru"); }),
              "The parent object of the parameter is closed.");
}
