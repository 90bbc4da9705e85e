#pragma once

#include <optional>
#include <string>
#include <vector>

#include "plugin/host/Host.h"
#include "plugin/host/Names.h"
#include "plugin/host/Plugin.h"
#include "plugin/host/ProgramText.h"
#include "plugin/host/Report.h"
#include "plugin/host/Value.h"

namespace vela::host {

// A value in a program. A text that is written without an encoding equals one in ASCII, too.
struct Operand {
    Value value;
    bool isTagged = true;
};

// What had been taken from the host, and not given back, at a "mark".
struct Balance {
    size_t strings = 0;
    int64_t stringReferences = 0;
    size_t objects = 0;
    int64_t objectReferences = 0;

    bool operator==(const Balance& other) const = default;
};

// Session is what the commands of one program work on.
class Session {
public:
    Session(Host& theHost, Plugin& thePlugin, Report& theReport)
        : host(theHost), plugin(thePlugin), report(theReport), names(theHost.objects)
    {}
    ~Session() { DropTemporaries(); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    Host& host;
    Plugin& plugin;
    Report& report;
    Names names;
    // What the last data-source call said, or Nothing.
    Value message;
    Balance marked;
    int64_t markedMemory = 0;

    // The result of the last call.
    [[nodiscard]] Value Last() const;
    // Takes over the caller's reference to an object.
    void SetLast(const Value& value) { names.Set(kLastName, value); }

    // These read tokens of the line, counted from 0, and fail with a message in the report. A token
    // that isn't there stops the program.
    //
    // The value there; "folder" and a path are one value of two tokens. *index moves past it. An
    // object stays good while the line is run.
    [[nodiscard]] std::optional<Operand> ReadValue(const ProgramLine& line, size_t* index);
    [[nodiscard]] std::optional<Text> ReadText(const ProgramLine& line, size_t index);
    // The bytes of a word or a text.
    [[nodiscard]] std::optional<std::string> ReadName(const ProgramLine& line, size_t index);
    // An absolute path.
    [[nodiscard]] std::optional<std::string> ReadPath(const ProgramLine& line, size_t index);
    [[nodiscard]] std::optional<int32_t> ReadNumber(const ProgramLine& line, size_t index);
    [[nodiscard]] DatabaseObject* ReadDatabase(const ProgramLine& line, size_t index);
    [[nodiscard]] CursorObject* ReadCursor(const ProgramLine& line, size_t index);

    // The same for a name.
    [[nodiscard]] DatabaseObject* FindDatabase(const std::string& name);
    [[nodiscard]] CursorObject* FindCursor(const std::string& name);

    // A line has been run.
    void DropTemporaries();
    [[nodiscard]] Balance CurrentBalance() const;

private:
    static constexpr const char* kLastName = "";

    [[nodiscard]] bool HasToken(const ProgramLine& line, size_t index);
    [[nodiscard]] HostObject* FindObject(const std::string& name);

    std::vector<HostObject*> mTemporaries;   // made for values of this line
};

// Whether wanted, as a program wrote it, is what came.
[[nodiscard]] bool Matches(const Operand& wanted, const Value& got);

}   // namespace vela::host
