#pragma once

#include <map>
#include <string>
#include <vector>

#include "plugin/MOXAPlugin.h"

namespace vela::host {

class Complaints;

// Something that DesignAddDataSource added to the program being developed.
struct DataSource {
    std::string kind;
    std::string data;
};

// What the plug-in has registered. Every record is checked as it comes.
class Registrations {
public:
    // Complaints are told of records that are not as they should be, and of everything that is
    // registered twice.
    explicit Registrations(Complaints& complaints) : mComplaints(complaints) {}

    void SetInterfaceVersion(int32_t version);
    void AddEngine(const MOXAdbEngineDefinition* definition);
    void AddCursor(const MOXAdbCursorDefinition* definition);
    void AddClass(const MOXAclassDefinition* definition);
    void AddInterface(const char* name, MOXAdataSourceInterfaceProc run);
    void AddSourceKind(const char* kind, MOXAopenDataSourceProc open);
    // The plug-in is gone, and with it all of this.
    void Clear();

    // In the order of registration: "engine", "cursor", and names of classes, data-source
    // interfaces and kinds of data sources.
    [[nodiscard]] const std::vector<std::string>& Names() const { return mNames; }
    [[nodiscard]] bool Has(const std::string& name) const;

    // These are null for what is not registered.
    [[nodiscard]] const MOXAdbEngineDefinition* Engine() const { return mEngine; }
    [[nodiscard]] const MOXAdbCursorDefinition* Cursor() const { return mCursor; }
    [[nodiscard]] const MOXAclassDefinition* Class(const std::string& name) const;
    [[nodiscard]] MOXAdataSourceInterfaceProc Interface(const std::string& name) const;
    [[nodiscard]] MOXAopenDataSourceProc SourceKind(const std::string& kind) const;

private:
    void AddName(const char* name);
    void CheckVersion(const char* what, int32_t version);

    Complaints& mComplaints;
    std::vector<std::string> mNames;
    int32_t mInterfaceVersion = 0;
    const MOXAdbEngineDefinition* mEngine = nullptr;
    const MOXAdbCursorDefinition* mCursor = nullptr;
    std::map<std::string, const MOXAclassDefinition*> mClasses;
    std::map<std::string, MOXAdataSourceInterfaceProc> mInterfaces;
    std::map<std::string, MOXAopenDataSourceProc> mSourceKinds;
};

}   // namespace vela::host
