// Opens a collection over a node map of its own description, writes Width with correction and reads the
// catalogue's name back: what a user's first program does. Prints "Width 1024" and exits 0 on success.
#include <GenApi/GenApi.h>
#include <QCoreApplication>
#include <cstdio>
#include <parametercollection/Exceptions.h>
#include <parametercollection/IIntegerParameter.h>
#include <parametercollection/ObjectState.h>
#include <parametercollection/ParameterCollection.h>
#include <parametercollection/ParameterNameCatalogue.h>
#include <parametercollection/ParameterPath.h>

static const char* const description = R"(<?xml version="1.0" encoding="utf-8"?>
<RegisterDescription ModelName="Consumer" VendorName="Tests" ToolTip="" StandardNameSpace="None"
    SchemaMajorVersion="1" SchemaMinorVersion="1" SchemaSubMinorVersion="0" MajorVersion="1"
    MinorVersion="0" SubMinorVersion="0" ProductGuid="00000000-0000-0000-0000-000000000001"
    VersionGuid="00000000-0000-0000-0000-000000000002"
    xmlns="http://www.genicam.org/GenApi/Version_1_1"
    xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"
    xsi:schemaLocation="http://www.genicam.org/GenApi/Version_1_1 GenApiSchema_Version_1_1.xsd">
  <Category Name="Root" NameSpace="Standard"><pFeature>Width</pFeature></Category>
  <Integer Name="Width" NameSpace="Standard">
    <Value>640</Value><Min>16</Min><Max>4096</Max><Inc>16</Inc>
  </Integer>
</RegisterDescription>)";

int main(int argc, char** argv) try {
    QCoreApplication application(argc, argv);
    using namespace ParameterCollection;
    GenApi::CNodeMapRef map;
    map._LoadXMLFromString(description);
    QSharedPointer<CObjectState> state(new CObjectState(nullptr));
    CParameterCollection collection(state);
    collection.announceNodeMap(ParameterPath::CameraDevice);
    collection.attachNodeMap(ParameterPath::CameraDevice, map._Ptr);
    state->setState(ObjectState_Open);
    auto width = collection.get(TRCamera::Width);
    width->setValue(1020, IntegerValueCorrection_Up);
    const long long value = width->getValue();
    std::printf("Width %lld\n", value);
    collection.detachAllNodeMaps();
    return value == 1024 ? 0 : 1;
} catch (const Core::Exception::BaseException& error) {
    std::fprintf(stderr, "%s\n", error.getMessage().toUtf8().constData());
    return 2;
}
