#include <iostream>
#include <memory>

#include "plugin/host/Command.h"
#include "plugin/host/MethodCall.h"
#include "plugin/host/Session.h"

namespace vela::host {

namespace {

// "name.member" taken apart. False: stops the program.
bool ReadMember(Session& session, const ProgramLine& line, std::string* name, std::string* member)
{
    const std::optional<std::string> both = session.ReadName(line, 1);
    if (!both)
        return false;
    const size_t point = both->find('.');
    if (point == std::string::npos) {
        session.report.Stop("NAME.MEMBER is wanted, not " + *both);
        return false;
    }
    *name = both->substr(0, point);
    *member = both->substr(point + 1);
    return true;
}

// new CLASS NAME
void RunNew(Session& session, const ProgramLine& line)
{
    const auto className = session.ReadName(line, 1);
    const auto name = session.ReadName(line, 2);
    if (!className || !name)
        return;
    const MOXAclassDefinition* definition = session.host.registrations.Class(*className);
    if (definition == nullptr) {
        session.report.Fail("there is no class " + *className);
        return;
    }
    DatabaseObject* object = session.host.objects.Add(std::make_unique<DatabaseObject>(definition));
    session.names.Set(*name, static_cast<HostObject*>(object));
    definition->constructor(object->Reference());
    if (object->Engine() == nullptr)
        session.report.Fail("the constructor has not set the object up");
}

// A property of a database object of a registered class; null with a failure when it has none.
MOXAobject* FindProperty(Session& session, DatabaseObject* object, const std::string& member)
{
    const MOXAclassDefinition* definition = object->ClassDefinition();
    for (int32_t i = 0; definition != nullptr && i < definition->propertyCount; i++)
        if (member == definition->properties[i].name)
            return object->PropertyPlace(definition->properties[i]);
    session.report.Fail("there is no property " + member);
    return nullptr;
}

// set NAME.PROPERTY VALUE
void RunSet(Session& session, const ProgramLine& line)
{
    std::string name;
    std::string member;
    size_t index = 2;
    if (!ReadMember(session, line, &name, &member))
        return;
    const std::optional<Operand> operand = session.ReadValue(line, &index);
    DatabaseObject* object = session.FindDatabase(name);
    if (!operand || object == nullptr)
        return;
    MOXAobject* place = FindProperty(session, object, member);
    if (place == nullptr)
        return;
    auto* const* given = std::get_if<HostObject*>(&operand->value);
    HostObject* item = given == nullptr ? nullptr : dynamic_cast<FolderItem*>(*given);
    if (item == nullptr && !std::holds_alternative<Nothing>(operand->value)) {
        session.report.Fail("a folder item or nothing is wanted");
        return;
    }
    if (item != nullptr)
        session.host.objects.AddReference(item);
    HostObject* before = session.host.objects.Find<HostObject>(*place, "a property is");
    *place = item == nullptr ? nullptr : item->Reference();
    session.host.objects.Release(before);
}

// get NAME.PROPERTY
void RunGet(Session& session, const ProgramLine& line)
{
    std::string name;
    std::string member;
    if (!ReadMember(session, line, &name, &member))
        return;
    const Value* value = session.names.Find(name);
    auto* const* object = value == nullptr ? nullptr : std::get_if<HostObject*>(value);
    if (const auto* item = object == nullptr ? nullptr : dynamic_cast<FolderItem*>(*object)) {
        session.SetLast(Text{member == "Name" ? item->Name() : item->Path(), kUTF8});
        return;
    }
    DatabaseObject* database = session.FindDatabase(name);
    MOXAobject* place = database == nullptr ? nullptr : FindProperty(session, database, member);
    if (place == nullptr)
        return;
    HostObject* held = session.host.objects.Find<HostObject>(*place, "a property is");
    if (held != nullptr)
        session.host.objects.AddReference(held);
    session.SetLast(held == nullptr ? Value(Nothing()) : Value(held));
}

const MOXAmethodDefinition* FindMethod(const DatabaseObject& object, const std::string& name)
{
    const MOXAclassDefinition* definition = object.ClassDefinition();
    MethodDeclaration declaration;
    for (int32_t i = 0; definition != nullptr && i < definition->methodCount; i++)
        if (ReadDeclaration(definition->methods[i].declaration, &declaration) &&
            declaration.name == name)
            return &definition->methods[i];
    return nullptr;
}

// call NAME.METHOD [VALUE ...]
void RunCall(Session& session, const ProgramLine& line)
{
    std::string name;
    std::string member;
    if (!ReadMember(session, line, &name, &member))
        return;
    std::vector<Value> arguments;
    for (size_t index = 2; index < line.tokens.size();) {
        const std::optional<Operand> operand = session.ReadValue(line, &index);
        if (!operand)
            return;
        arguments.push_back(operand->value);
    }
    DatabaseObject* object = session.FindDatabase(name);
    if (object == nullptr)
        return;
    const MOXAmethodDefinition* method = FindMethod(*object, member);
    if (method == nullptr) {
        session.report.Fail("there is no method " + member);
        return;
    }
    Value result;
    std::string problem;
    if (CallMethod(session.host, object->Reference(), *method, arguments, &result, &problem))
        session.SetLast(result);
    else
        session.report.Fail(problem);
}

// drop NAME
void RunDrop(Session& session, const ProgramLine& line)
{
    const auto name = session.ReadName(line, 1);
    if (!name)
        return;
    if (session.names.Find(*name) == nullptr)
        session.report.Fail("there is no " + *name);
    session.names.Remove(*name);
}

// keep NAME
void RunKeep(Session& session, const ProgramLine& line)
{
    if (const auto name = session.ReadName(line, 1))
        session.names.SetAndHold(*name, session.Last());
}

// print VALUE ...
void RunPrint(Session& session, const ProgramLine& line)
{
    std::string text;
    for (size_t index = 1; index < line.tokens.size();) {
        const std::optional<Operand> operand = session.ReadValue(line, &index);
        if (!operand)
            return;
        text += (text.empty() ? "" : " ") + PastedText(operand->value);
    }
    std::cout << text << '\n';
}

}   // namespace

const std::vector<Command>& ObjectCommands()
{
    static const std::vector<Command> commands = {
        {"new", 3, 3, RunNew, "new CLASS NAME"},
        {"set", 3, 4, RunSet, "set NAME.PROPERTY VALUE"},
        {"get", 2, 2, RunGet, "get NAME.PROPERTY"},
        {"call", 2, kAnyNumber, RunCall, "call NAME.METHOD [VALUE ...]"},
        {"drop", 2, 2, RunDrop, "drop NAME"},
        {"keep", 2, 2, RunKeep, "keep NAME"},
        {"print", 1, kAnyNumber, RunPrint, "print VALUE ..."},
    };
    return commands;
}

}   // namespace vela::host
