#pragma once

#include <memory>

#include "engine/sql/SQLText.h"
#include "runtime/ArenaList.h"

namespace vela {

// SQLSyntaxNode is a node of the tree that the parser makes of one statement.
//
// A tree is built once by the parser, read by the executors and given back as a whole through its root. Nodes, their lists
// and what texts the statement doesn't hold lie in one arena, which SQLSyntaxNodePtr owns along with the statement: nodes
// need no destruction, and point at their children without owning them. Statement nodes are plain records of what was
// written, so their fields are public; a node executes nothing.
// A tree returned along with an error may lack children anywhere: printing it and deleting it is
// safe, using it otherwise is not.
class SQLSyntaxNode {
public:
    SQLSyntaxNode() = default;
    SQLSyntaxNode(const SQLSyntaxNode&) = delete;
    SQLSyntaxNode& operator=(const SQLSyntaxNode&) = delete;

    // The canonical text: keywords in upper case, one blank between clauses, ", " between list
    // items, every infix expression in parentheses; names and literals as written. It has the
    // encoding of the statement.
    [[nodiscard]] string Description() const;

    // What kind of statement the tree is; each is true in one statement class only.
    [[nodiscard]] virtual bool IsSelect() const { return false; }
    [[nodiscard]] virtual bool IsInsert() const { return false; }
    [[nodiscard]] virtual bool IsUpdate() const { return false; }
    [[nodiscard]] virtual bool IsDelete() const { return false; }
    [[nodiscard]] virtual bool IsSetOption() const { return false; }
    [[nodiscard]] virtual bool IsCreateTable() const { return false; }
    [[nodiscard]] virtual bool IsCreateIndex() const { return false; }
    [[nodiscard]] virtual bool IsAlterTable() const { return false; }
    [[nodiscard]] virtual bool IsEndTransaction() const { return false; }
    [[nodiscard]] virtual bool IsDropTable() const { return false; }
    [[nodiscard]] virtual bool IsDropIndex() const { return false; }

    // Appends the canonical text. Texts are appended rather than returned and joined, which would
    // copy a deep tree's text once per level.
    virtual void Describe(string* text) const = 0;

protected:
    ~SQLSyntaxNode() = default;   // not virtual: nobody destroys nodes
};

// What a tree lives in.
struct SQLTreeMemory {
    explicit SQLTreeMemory(const string& text) : statement(text) {}

    string statement;   // of which most texts in the tree are parts
    BlockArena arena;
};

struct SQLTreeDeleter {
    void operator()(const SQLSyntaxNode*) const { delete memory; }

    SQLTreeMemory* memory = nullptr;
};

// The root of a tree, as its owner. It needs neither the parser nor the statement any more.
using SQLSyntaxNodePtr = std::unique_ptr<const SQLSyntaxNode, SQLTreeDeleter>;

// Helpers for Describe.

// Appends text that came from the statement and takes its encoding over.
void DescribeText(const SQLText& part, string* text);
// Appends names with ", " between them.
void DescribeNames(const ArenaList<SQLText>& names, string* text);
// Appends nothing for a child that is missing.
void DescribeChild(const SQLSyntaxNode* child, string* text);
// Appends the nodes with ", " between them.
template <class Node>
void DescribeList(const ArenaList<Node*>& nodes, string* text)
{
    for (size_t i = 0; i < nodes.size(); i++) {
        if (i > 0)
            *text += ", ";
        DescribeChild(nodes[i], text);
    }
}

}   // namespace vela
