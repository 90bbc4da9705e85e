#include "tests/sql/RandomStatement.h"

#include <cctype>
#include <iterator>

namespace vela {

std::string RandomStatement::Next()
{
    mText.clear();
    switch (Below(8)) {
        case 0:
            Insert();
            break;
        case 1:
            Update();
            break;
        case 2:
            Word("DELETE");
            Word("FROM");
            Name();
            Where();
            break;
        case 3:
            Create();
            break;
        case 4:
            Alter();
            break;
        case 5:
            Drop();
            break;
        default:
            Select();
            break;
    }
    return mText;
}

// A keyword in any case.
void RandomStatement::Word(const char* keyword)
{
    std::string word = keyword;
    for (char& c : word)
        c = Chance(50) ? c : static_cast<char>(std::tolower(c));
    Put(word);
}

// A token, with a blank before it where two words would run together, and sometimes elsewhere.
void RandomStatement::Put(const std::string& token)
{
    const char* const blanks[] = {" ", "  ", "\t", "\r ", " \n"};
    const std::string delimiters = "()*+,-/<=>";
    const bool runsOn = mText.empty() || delimiters.find(mText.back()) != std::string::npos ||
                        delimiters.find(token[0]) != std::string::npos;
    // "<" and ">" before "=" would read as one operator; so might a word's end before "*".
    if (!mText.empty() && (!runsOn || Chance(30) || token == "*"))
        mText += blanks[Below(std::size(blanks))];
    mText += token;
}

void RandomStatement::Name()
{
    const char* const names[] = {"a", "b", "Tab_1", "#x", "caf\xC3\xA9", "_rowid", "x'y"};
    Put(names[Below(std::size(names))]);
}

void RandomStatement::QualifiedName()
{
    const char* const names[] = {"a", "t.b", "T.a.b", "u._rowid"};
    Put(names[Below(std::size(names))]);
}

template <class Item>
void RandomStatement::List(Item item)
{
    item();
    while (Chance(40)) {
        Put(",");
        item();
    }
}

void RandomStatement::Select()
{
    Word("SELECT");
    if (Chance(20))
        Word(Chance(50) ? "DISTINCT" : "ALL");
    List([this] {
        if (Chance(20)) {
            Put(Chance(50) ? "*" : "t.*");
            return;
        }
        Condition(3);
        if (Chance(30))
            Word("AS");
        else if (Chance(80))
            return;
        Name();
    });
    if (Chance(10))
        return;
    Word("FROM");
    List([this] {
        Name();
        if (Chance(30))
            Word("AS");
        else if (Chance(70))
            return;
        Name();
    });
    Where();
    if (Chance(30)) {
        Word("GROUP");
        Word("BY");
        List([this] { QualifiedName(); });
    }
    if (Chance(20)) {
        Word("HAVING");
        Condition(3);
    }
    if (!Chance(40))
        return;
    Word("ORDER");
    Word("BY");
    List([this] {
        QualifiedName();
        if (Chance(50))
            Word(Chance(50) ? "ASC" : "DESC");
    });
}

void RandomStatement::Insert()
{
    Word("INSERT");
    Word("INTO");
    Name();
    if (Chance(50)) {
        Put("(");
        List([this] { Name(); });
        Put(")");
    }
    if (Chance(10)) {
        Word("DEFAULT");
        Word("VALUES");
    } else if (Chance(20)) {
        Select();
    } else {
        Word("VALUES");
        Put("(");
        List([this] { Expression(3); });
        Put(")");
    }
}

void RandomStatement::Update()
{
    Word("UPDATE");
    Name();
    Word("SET");
    List([this] {
        Name();
        Put("=");
        Expression(3);
    });
    Where();
}

void RandomStatement::Create()
{
    Word("CREATE");
    if (Chance(50)) {
        Word("TABLE");
        Name();
        Put("(");
        List([this] { ColumnDef(); });
    } else {
        Word("INDEX");
        Name();
        Word("ON");
        Name();
        Put("(");
        List([this] { Name(); });
    }
    Put(")");
}

void RandomStatement::ColumnDef()
{
    Name();
    Word(Chance(50) ? "INTEGER" : "STRING");
    if (Chance(20)) {
        Word("PRIMARY");
        Word("KEY");
    }
    if (Chance(20)) {
        Word("DEFAULT");
        Expression(2);
    }
    if (Chance(20)) {
        Word("NOT");
        Word("NULL");
    }
}

void RandomStatement::Alter()
{
    Word("ALTER");
    Word("TABLE");
    Name();
    if (Chance(20)) {
        Word("RENAME");
        Word("TO");
        Name();
        return;
    }
    const char* const actions[] = {"ADD", "MODIFY", "DROP", "RENAME", "ALTER"};
    const uint32_t action = Below(std::size(actions));
    Word(actions[action]);
    if (Chance(50))
        Word("COLUMN");
    if (action < 2) {
        ColumnDef();
        return;
    }
    Name();
    if (action == 2 && Chance(60)) {
        Word(Chance(50) ? "RESTRICT" : "CASCADE");
    } else if (action == 3) {
        Word("TO");
        Name();
    } else if (action == 4 && Chance(50)) {
        Word("DROP");
        Word("DEFAULT");
    } else if (action == 4) {
        Word("SET");
        Expression(2);
    }
}

void RandomStatement::Drop()
{
    Word("DROP");
    if (Chance(50)) {
        Word("INDEX");
        Put("t.i");
        return;
    }
    Word("TABLE");
    Name();
    if (Chance(60))
        Word(Chance(50) ? "RESTRICT" : "CASCADE");
}

void RandomStatement::Where()
{
    if (Chance(50))
        return;
    Word("WHERE");
    Condition(4);
}

void RandomStatement::Condition(int depth)
{
    const bool isAnd = Chance(50);
    Term(depth);
    while (depth > 0 && Chance(30)) {
        Word(isAnd ? "AND" : "OR");
        Term(depth - 1);
    }
}

void RandomStatement::Term(int depth)
{
    if (Chance(20))
        Word("NOT");
    Expression(depth);
    if (Chance(20)) {
        if (Chance(40))
            Word("NOT");
        Word("LIKE");
        Expression(depth - 1);
        if (Chance(30)) {
            Word("ESCAPE");
            Literal();
        }
    } else if (Chance(30)) {
        const char* const operators[] = {"=", "<>", "<", "<=", ">", ">="};
        Put(operators[Below(std::size(operators))]);
        Expression(depth - 1);
    }
}

void RandomStatement::Expression(int depth)
{
    if (depth > 0 && Chance(15)) {
        Put(Chance(50) ? "-" : "+");
        Put("(");
        Expression(depth - 1);
        Put(")");
    } else if (depth > 0 && Chance(30)) {
        Expression(depth - 1);
        Put(std::string(1, "+-*/"[Below(4)]));
        Put("(");
        Expression(depth - 1);
        Put(")");
    } else if (depth > 0 && Chance(15)) {
        Call(depth - 1);
    } else if (Chance(50)) {
        QualifiedName();
    } else {
        Literal();
    }
}

void RandomStatement::Call(int depth)
{
    const char* const names[] = {"LOWER",    "UPPER", "CHARACTER_LENGTH", "BIT_LENGTH", "COUNT",
                                 "POSITION", "TRIM",  "SUBSTRING",        "SUM"};
    const uint32_t name = Below(std::size(names));
    Word(names[name]);
    Put("(");
    if (name == 4 && Chance(50)) {
        Put("*");
        Put(")");
        return;
    }
    if ((name == 4 || name == 8) && Chance(50))
        Word(Chance(50) ? "DISTINCT" : "ALL");
    if (name == 6) {
        if (Chance(50))
            Word(Chance(50) ? "LEADING" : "BOTH");
        Put("'x'");   // no word: the first one must be a side
        Word("FROM");
    }
    Expression(depth);
    if (name == 5) {
        Word("IN");
        Expression(depth);
    } else if (name == 7) {
        Word("FROM");
        Literal();
        if (Chance(50)) {
            Word("FOR");
            Literal();
        }
    }
    Put(")");
}

void RandomStatement::Literal()
{
    const char* const literals[] = {"1",  "42",      "1.5",  "1e-5",    "1234567890",
                                    "''", "'it''s'", "N'n'", "'a;b%_'", "'\xC3\xA9'"};
    if (Chance(15)) {
        Word(Chance(50) ? "DATE" : "TIMESTAMP");
        Put("'1994-07-09'");
    } else if (Chance(10)) {
        Word(Chance(50) ? "TRUE" : "FALSE");
    } else {
        Put(literals[Below(std::size(literals))]);
    }
}

}   // namespace vela
