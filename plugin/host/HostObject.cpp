#include "plugin/host/HostObject.h"

#include "plugin/host/Complaints.h"

namespace vela::host {

DatabaseObject::DatabaseObject(const MOXAclassDefinition* definition)
    : mClass(definition),
      mInstanceData(std::make_unique<void*[]>(definition->instanceSize / sizeof(void*) + 1))
{}

MOXAobject* DatabaseObject::PropertyPlace(const MOXApropertyDefinition& property)
{
    return reinterpret_cast<MOXAobject*>(reinterpret_cast<char*>(mInstanceData.get()) +
                                         property.offset);
}

void DatabaseObject::SetUp(dbDatabase* database, const MOXAdbEngineDefinition* engine)
{
    mDatabase = database;
    mEngine = engine;
}

void DatabaseObject::End()
{
    if (mClass != nullptr)
        mClass->destructor(Reference());
    else
        mEngine->releaseDatabase(mDatabase);
}

ObjectStore::~ObjectStore()
{
    for (HostObject* object : mLive)
        delete object;
}

void ObjectStore::Insert(HostObject* object)
{
    mLive.insert(object);
    mReferences++;
    mMade++;
}

void ObjectStore::AddReference(HostObject* object)
{
    object->mReferences++;
    mReferences++;
}

void ObjectStore::Release(HostObject* object)
{
    if (object == nullptr)
        return;
    if (object->mReferences == 0) {
        mComplaints.Add("giving back an object that is just ending: " + object->Describe());
        return;
    }
    mReferences--;
    if (--object->mReferences > 0)
        return;
    object->End();
    mLive.erase(object);
    delete object;
}

HostObject* ObjectStore::FindAny(MOXAobject reference, const char* use)
{
    if (reference == nullptr)
        return nullptr;
    HostObject* object = HostObject::FromReference(reference);
    if (!mLive.contains(object)) {
        mComplaints.Add(std::string(use) + " an object that is not there (any more)");
        return nullptr;
    }
    return object;
}

std::vector<std::string> ObjectStore::DescribeLive(size_t limit) const
{
    std::vector<std::string> lines;
    for (const HostObject* object : mLive) {
        if (lines.size() == limit)
            break;
        lines.push_back(object->Describe() + " with " + std::to_string(object->mReferences) +
                        " reference(s)");
    }
    return lines;
}

}   // namespace vela::host
