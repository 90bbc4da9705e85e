#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "plugin/host/ProgramText.h"
#include "plugin/host/Value.h"

namespace vela::host {

class ObjectStore;

// Names of a program and the values that they stand for. An object is held as long as it has a
// name.
class Names {
public:
    explicit Names(ObjectStore& objects) : mObjects(objects) {}
    ~Names() { Clear(); }
    Names(const Names&) = delete;
    Names& operator=(const Names&) = delete;

    // Gives value a name, and takes over the caller's reference to an object. What had that name
    // before loses it.
    void Set(const std::string& name, const Value& value);
    // The same, with a reference of its own to an object.
    void SetAndHold(const std::string& name, const Value& value);
    void Remove(const std::string& name);
    void Clear();
    // Null when nothing has that name. Good until the names change.
    [[nodiscard]] const Value* Find(const std::string& name) const;

    // The bytes of a token, its sums worked out and pasted. Nothing, with *problem, when a name in
    // a sum is not known.
    [[nodiscard]] std::optional<std::string> Expand(const Token& token, std::string* problem) const;
    // The value that a token stands for: a text, a value's word, a name. Nothing as above. The
    // value of a name stays the name's.
    [[nodiscard]] std::optional<Value> Evaluate(const Token& token, std::string* problem) const;

private:
    std::optional<Value> EvaluateSum(std::string_view sum, std::string* problem) const;
    std::optional<int64_t> EvaluateTerm(const std::string& term, std::string* problem) const;

    ObjectStore& mObjects;
    std::map<std::string, Value> mValues;
};

}   // namespace vela::host
