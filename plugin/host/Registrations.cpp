#include "plugin/host/Registrations.h"

#include <algorithm>

#include "plugin/host/Complaints.h"

namespace vela::host {

namespace {

template <typename Map>
typename Map::mapped_type FindIn(const Map& map, const std::string& name)
{
    const auto found = map.find(name);
    return found == map.end() ? nullptr : found->second;
}

bool IsComplete(const MOXAdbEngineDefinition& engine)
{
    return engine.closeDatabase && engine.tableSchema && engine.fieldSchema &&
           engine.directSQLSelect && engine.directSQLExecute && engine.indexSchema &&
           engine.lastErrorCode && engine.lastErrorString && engine.releaseDatabase;
}

bool IsComplete(const MOXAdbCursorDefinition& cursor)
{
    return cursor.closeCursor && cursor.columnCount && cursor.columnName && cursor.columnType &&
           cursor.columnValue && cursor.rowCount && cursor.firstRow && cursor.nextRow &&
           cursor.previousRow && cursor.lastRow && cursor.moveToRow && cursor.currentRow &&
           cursor.atEnd && cursor.deleteRow && cursor.updateRow;
}

bool IsComplete(const MOXApropertyDefinition& property, uint32_t instanceSize)
{
    return property.name && property.type && !property.getter && !property.setter &&
           property.offset % sizeof(void*) == 0 && property.offset + sizeof(void*) <= instanceSize;
}

bool IsComplete(const MOXAclassDefinition& definition)
{
    for (int32_t i = 0; i < definition.propertyCount; i++)
        if (!IsComplete(definition.properties[i], definition.instanceSize))
            return false;
    for (int32_t i = 0; i < definition.methodCount; i++)
        if (!definition.methods[i].function || !definition.methods[i].declaration)
            return false;
    return definition.name && definition.superclass && definition.constructor &&
           definition.destructor;
}

}   // namespace

void Registrations::SetInterfaceVersion(int32_t version)
{
    if (mInterfaceVersion != 0)
        mComplaints.Add("the interface version is registered twice");
    mInterfaceVersion = version;
    CheckVersion("the plug-in", version);
}

void Registrations::AddEngine(const MOXAdbEngineDefinition* definition)
{
    AddName("engine");
    mEngine = definition;
    CheckVersion("the engine", definition->version);
    if (!IsComplete(*definition))
        mComplaints.Add("the engine's record is incomplete");
    static const std::string kTypeNames =
        "Integer,VarChar,Boolean,Date,Time,Timestamp,Double,Binary";
    if (definition->fieldTypeNames != kTypeNames)
        mComplaints.Add("the engine's field types are not " + kTypeNames);
}

void Registrations::AddCursor(const MOXAdbCursorDefinition* definition)
{
    AddName("cursor");
    mCursor = definition;
    CheckVersion("the cursor", definition->version);
    if (!IsComplete(*definition))
        mComplaints.Add("the cursor's record is incomplete");
}

void Registrations::AddClass(const MOXAclassDefinition* definition)
{
    AddName(definition->name);
    CheckVersion(definition->name, definition->version);
    if (!IsComplete(*definition)) {
        mComplaints.Add(std::string("the record of the class ") + definition->name +
                        " is incomplete");
        return;
    }
    mClasses[definition->name] = definition;
}

void Registrations::AddInterface(const char* name, MOXAdataSourceInterfaceProc run)
{
    AddName(name);
    mInterfaces[name] = run;
}

void Registrations::AddSourceKind(const char* kind, MOXAopenDataSourceProc open)
{
    AddName(kind);
    mSourceKinds[kind] = open;
}

void Registrations::Clear()
{
    mNames.clear();
    mInterfaceVersion = 0;
    mEngine = nullptr;
    mCursor = nullptr;
    mClasses.clear();
    mInterfaces.clear();
    mSourceKinds.clear();
}

bool Registrations::Has(const std::string& name) const
{
    return std::find(mNames.begin(), mNames.end(), name) != mNames.end();
}

const MOXAclassDefinition* Registrations::Class(const std::string& name) const
{
    return FindIn(mClasses, name);
}

MOXAdataSourceInterfaceProc Registrations::Interface(const std::string& name) const
{
    return FindIn(mInterfaces, name);
}

MOXAopenDataSourceProc Registrations::SourceKind(const std::string& kind) const
{
    return FindIn(mSourceKinds, kind);
}

void Registrations::AddName(const char* name)
{
    if (Has(name))
        mComplaints.Add(std::string(name) + " is registered twice");
    mNames.emplace_back(name);
}

void Registrations::CheckVersion(const char* what, int32_t version)
{
    if (version != MOXA_INTERFACE_VERSION)
        mComplaints.Add(std::string(what) + " is of version " + std::to_string(version) +
                        " of the interface, not " + std::to_string(MOXA_INTERFACE_VERSION));
}

}   // namespace vela::host
