#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "plugin/MOXAPlugin.h"

namespace vela::host {

class Complaints;

// An object of this host. Its address is what a MOXAobject is. It goes with its last reference.
class HostObject {
public:
    HostObject() = default;
    virtual ~HostObject() = default;
    HostObject(const HostObject&) = delete;
    HostObject& operator=(const HostObject&) = delete;

    // The object behind a reference that ObjectStore has found to be good, or that this host made.
    [[nodiscard]] static HostObject* FromReference(MOXAobject reference)
    {
        return reinterpret_cast<HostObject*>(reference);
    }
    [[nodiscard]] MOXAobject Reference() { return reinterpret_cast<MOXAobject>(this); }

    // For messages: what it is.
    [[nodiscard]] virtual std::string Describe() const = 0;
    // The last reference has been given back: lets go of what the object holds in the plug-in. The
    // object is still there for services that are called meanwhile.
    virtual void End() {}

private:
    friend class ObjectStore;
    int32_t mReferences = 1;
};

// A place in the file system, whether anything is there or not.
class FolderItem : public HostObject {
public:
    // Path is absolute, without a slash at its end.
    explicit FolderItem(std::string path) : mPath(std::move(path)) {}

    [[nodiscard]] const std::string& Path() const { return mPath; }
    // The last part of the path.
    [[nodiscard]] std::string Name() const { return mPath.substr(mPath.rfind('/') + 1); }
    [[nodiscard]] std::string Describe() const override { return "folder item \"" + mPath + "\""; }

private:
    std::string mPath;
};

// An object of the class "Database": either of a class that the plug-in registered, with its
// instance data, or made around a database that the plug-in opened by itself.
class DatabaseObject : public HostObject {
public:
    // Of a registered class. The caller then calls the class's constructor.
    explicit DatabaseObject(const MOXAclassDefinition* definition);
    DatabaseObject(dbDatabase* database, const MOXAdbEngineDefinition* engine)
        : mDatabase(database), mEngine(engine)
    {}

    // Null for an object without a class of the plug-in's.
    [[nodiscard]] const MOXAclassDefinition* ClassDefinition() const { return mClass; }
    [[nodiscard]] void* InstanceData() { return mInstanceData.get(); }
    // Where a property lies in the instance data.
    [[nodiscard]] MOXAobject* PropertyPlace(const MOXApropertyDefinition& property);

    // What "MOXAConstructDBDatabase" says.
    void SetUp(dbDatabase* database, const MOXAdbEngineDefinition* engine);
    [[nodiscard]] dbDatabase* Database() const { return mDatabase; }
    // Null until the object has been set up.
    [[nodiscard]] const MOXAdbEngineDefinition* Engine() const { return mEngine; }

    [[nodiscard]] bool IsConnected() const { return mIsConnected; }
    void SetIsConnected(bool isConnected) { mIsConnected = isConnected; }

    [[nodiscard]] std::string Describe() const override { return "database"; }
    void End() override;

private:
    const MOXAclassDefinition* mClass = nullptr;
    std::unique_ptr<void*[]> mInstanceData;   // in whole pointers, which aligns it
    dbDatabase* mDatabase = nullptr;
    const MOXAdbEngineDefinition* mEngine = nullptr;
    bool mIsConnected = false;
};

// What a program walks: an object around a cursor of the plug-in.
class CursorObject : public HostObject {
public:
    CursorObject(dbCursor* cursor, const MOXAdbCursorDefinition* definition)
        : mCursor(cursor), mDefinition(definition)
    {}

    [[nodiscard]] dbCursor* Cursor() const { return mCursor; }
    [[nodiscard]] const MOXAdbCursorDefinition& Calls() const { return *mDefinition; }

    [[nodiscard]] std::string Describe() const override { return "cursor"; }
    void End() override { mDefinition->closeCursor(mCursor); }

private:
    dbCursor* mCursor;
    const MOXAdbCursorDefinition* mDefinition;
};

// ObjectStore holds every object that somebody has a reference to.
class ObjectStore {
public:
    // Complaints are told of every use of an object that isn't there.
    explicit ObjectStore(Complaints& complaints) : mComplaints(complaints) {}
    // Objects that are left are given up as they are: the plug-in may be gone by now.
    ~ObjectStore();
    ObjectStore(const ObjectStore&) = delete;
    ObjectStore& operator=(const ObjectStore&) = delete;

    // Takes over a new object, whose one reference is the caller's.
    template <typename Kind>
    Kind* Add(std::unique_ptr<Kind> object)
    {
        Kind* added = object.release();
        Insert(added);
        return added;
    }
    void AddReference(HostObject* object);
    // The last reference ends the object. Null is let pass.
    void Release(HostObject* object);

    // The object of that kind behind a reference; null for a null reference, one to nothing, and an
    // object of another kind. use names the caller in the complaint.
    template <typename Kind>
    [[nodiscard]] Kind* Find(MOXAobject reference, const char* use)
    {
        return dynamic_cast<Kind*>(FindAny(reference, use));
    }

    [[nodiscard]] size_t Count() const { return mLive.size(); }
    [[nodiscard]] int64_t References() const { return mReferences; }
    // How many objects there have been.
    [[nodiscard]] int64_t Made() const { return mMade; }
    // The objects that are left, as lines for people; at most limit of them.
    [[nodiscard]] std::vector<std::string> DescribeLive(size_t limit) const;

private:
    void Insert(HostObject* object);
    HostObject* FindAny(MOXAobject reference, const char* use);

    Complaints& mComplaints;
    std::unordered_set<HostObject*> mLive;
    int64_t mReferences = 0;
    int64_t mMade = 0;
};

}   // namespace vela::host
