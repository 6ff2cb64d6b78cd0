// The orbsh language.
//
// One statement per line; blank lines are ignored and '#' starts a comment
// that runs to the end of the line (outside strings).
//
//   NAME = EXPR        binds NAME to the value of EXPR and prints nothing
//   EXPR               prints the value in the host's printed form
//   print(EXPR, ...)   prints the values side by side, strings as bare text
//   help               this summary and the exports of the loaded library
//   quit, exit         leave the shell
//
// Expressions:
//   42  -7             integers (64-bit signed)
//   1.5 .5 2. -1e-3    floats; one beyond the range of a double is infinity
//   inf -inf nan       (1e999); inf and nan are float literals, not names
//   2i  1+2i  -1.5-0.5i
//                      complex numbers: an imaginary literal is a number
//                      followed directly by i; a real literal, + or - and an
//                      imaginary literal form one complex literal (infi
//                      and nani are imaginary too). There is no other
//                      arithmetic.
//   "text"             strings, with the escapes \" \\ \n \t
//   [a, b, c]          lists
//   NAME               the bound value, or else the name itself (true and
//                      false are names too)
//   f(a, b)            calls the library's export f through the host
//   rtable(DT, [1, 2, 3])      a one-dimensional rtable from a list; nested
//                              lists give two or more dimensions
//   rtable(DT, 4)  rtable(DT, 2, 3)
//                              zero-filled, with these dimensions
// where DT is integer[1], integer[2], integer[4], integer[8], float[4],
// float[8], complex[8] or anything (any datatype text of the host).
// Every dimension runs from 1; elements must fit the datatype.
#include "shell.h"

#include "builtins.h"
#include "help_table.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <sstream>

namespace orbsh {

using orbhost::Host;
using orbhost::Value;

namespace {

// Lists and calls nested deeper than this are refused, which keeps the
// recursive parser and printer far from the end of the stack.
constexpr int kMaxDepth = 200;
// Largest rtable the shell makes, in bytes, and the most dimensions.
constexpr uint64_t kMaxRTableBytes = uint64_t(1) << 30;
constexpr size_t kMaxDims = 32;
// Datatype codes run from 0 (host values) to 8 (float[4]).
constexpr int32_t kLastDatatype = 8;

// ----------------------------------------------------------------- lexing

struct Token {
    enum Type { End, Number, String, Ident, Punct } type = End;
    std::string text;        // number text (without the i), string contents, identifier, punctuation
    bool isFloat = false;    // a number with a point or exponent
    bool imaginary = false;  // a number followed by i
    size_t column = 0;       // 1-based
};

bool isIdentStart(char c) { return std::isalpha(static_cast<unsigned char>(c)) || c == '_'; }
bool isIdentChar(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

[[noreturn]] void syntaxError(size_t column, const std::string &what)
{
    throw ShellError{"syntax error at column " + std::to_string(column) + ": " + what};
}

std::string showChar(char c)
{
    unsigned char u = static_cast<unsigned char>(c);
    if (u >= 0x20 && u < 0x7f) return std::string("'") + c + "'";
    char buf[8];
    std::snprintf(buf, sizeof buf, "\\x%02x", u);
    return std::string("byte ") + buf;
}

std::vector<Token> lex(const std::string &line)
{
    std::vector<Token> out;
    size_t i = 0, n = line.size();
    while (i < n) {
        char c = line[i];
        if (c == ' ' || c == '\t' || c == '\r') {
            ++i;
            continue;
        }
        if (c == '#') break;
        Token t;
        t.column = i + 1;
        if (isDigit(c) || (c == '.' && i + 1 < n && isDigit(line[i + 1]))) {
            size_t start = i;
            while (i < n && isDigit(line[i])) ++i;
            if (i < n && line[i] == '.' && !(i + 1 < n && line[i + 1] == '.')) {
                t.isFloat = true;
                ++i;
                while (i < n && isDigit(line[i])) ++i;
            }
            if (i < n && (line[i] == 'e' || line[i] == 'E')) {
                size_t j = i + 1;
                if (j < n && (line[j] == '+' || line[j] == '-')) ++j;
                if (j < n && isDigit(line[j])) {
                    while (j < n && isDigit(line[j])) ++j;
                    i = j;
                    t.isFloat = true;
                }
            }
            t.text = line.substr(start, i - start);
            if (i < n && line[i] == 'i' && !(i + 1 < n && isIdentChar(line[i + 1]))) {
                t.imaginary = true;
                ++i;
            }
            if (i < n && (isIdentChar(line[i]) || (line[i] == '.' && !(i + 1 < n && line[i + 1] == '.')))) {
                size_t j = i;
                while (j < n && (isIdentChar(line[j]) || line[j] == '.')) ++j;
                syntaxError(t.column, "malformed number '" + line.substr(start, j - start) + "'");
            }
            t.type = Token::Number;
        } else if (isIdentStart(c)) {
            size_t start = i;
            while (i < n && isIdentChar(line[i])) ++i;
            t.type = Token::Ident;
            t.text = line.substr(start, i - start);
            // The host prints infinities and NaNs as inf and nan, so these
            // words are float literals (and infi, nani imaginary ones).
            if (t.text == "inf" || t.text == "nan" || t.text == "infi" || t.text == "nani") {
                t.type = Token::Number;
                t.isFloat = true;
                t.imaginary = t.text.size() == 4;
                t.text.resize(3);
            }
        } else if (c == '"') {
            ++i;
            bool closed = false;
            while (i < n) {
                char d = line[i++];
                if (d == '"') {
                    closed = true;
                    break;
                }
                if (d == '\0') syntaxError(i, "a NUL byte inside a string");
                if (d != '\\') {
                    t.text += d;
                    continue;
                }
                if (i >= n) break;
                char e = line[i++];
                switch (e) {
                case '"': t.text += '"'; break;
                case '\\': t.text += '\\'; break;
                case 'n': t.text += '\n'; break;
                case 't': t.text += '\t'; break;
                default: syntaxError(i - 1, "unknown escape \\" + std::string(1, e) + " in a string");
                }
            }
            if (!closed) syntaxError(t.column, "unterminated string");
            t.type = Token::String;
        } else if (c == '.' && i + 1 < n && line[i + 1] == '.') {
            t.type = Token::Punct;
            t.text = "..";
            i += 2;
        } else if (std::strchr("()[],=+-", c) && c != '\0') {
            t.type = Token::Punct;
            t.text = std::string(1, c);
            ++i;
        } else {
            syntaxError(t.column, "unexpected character " + showChar(c));
        }
        out.push_back(std::move(t));
    }
    Token end;
    end.column = n + 1;
    out.push_back(end);
    return out;
}

// ---------------------------------------------------------------- parsing

class Parser {
public:
    explicit Parser(std::vector<Token> tokens) : t_(std::move(tokens)) {}

    Statement statement()
    {
        Statement s;
        if (peek().type == Token::End) return s;
        if (peek().type == Token::Ident && peek().text == "help" &&
            (peek(1).type == Token::End || (peek(1).type == Token::Ident && peek(2).type == Token::End))) {
            next();
            s.type = Statement::Help;
            if (peek().type == Token::Ident) s.name = next().text;
            return s;
        }
        if (peek().type == Token::Ident && peek(1).type == Token::End && (peek().text == "quit" || peek().text == "exit")) {
            s.type = Statement::Quit;
            return s;
        }
        // Prefixes: time (print the wall time) and try (an error is expected).
        while (peek().type == Token::Ident && (peek().text == "time" || peek().text == "try") &&
               peek(1).type != Token::End && !isPunct(peek(1), '=') && !isPunct(peek(1), '(')) {
            (next().text == "time" ? s.timed : s.tolerated) = true;
        }
        if (peek().type == Token::Ident && isPunct(peek(1), '=')) {
            s.type = Statement::Bind;
            s.name = next().text;
            next();
            s.expr = expr();
        } else {
            s.type = Statement::Show;
            s.expr = expr();
            if (isPunct(peek(), '=')) {
                if (s.expr.type != Node::Index || s.expr.kids[0].type != Node::Ident)
                    syntaxError(peek().column, "only a name or an element such as x[3] can be assigned to");
                for (size_t k = 1; k < s.expr.kids.size(); ++k)
                    if (s.expr.kids[k].type == Node::Range) syntaxError(peek().column, "a range of elements cannot be assigned to");
                next();
                s.type = Statement::Store;
                s.target = std::move(s.expr);
                s.expr = expr();
            }
        }
        if (peek().type != Token::End) syntaxError(peek().column, "unexpected " + describe(peek()) + " after the expression");
        return s;
    }

private:
    const Token &peek(size_t ahead = 0) const
    {
        size_t k = pos_ + ahead;
        return k < t_.size() ? t_[k] : t_.back();
    }
    const Token &next()
    {
        const Token &t = t_[pos_];
        if (pos_ + 1 < t_.size()) ++pos_;
        return t;
    }
    static bool isPunct(const Token &t, char c) { return t.type == Token::Punct && t.text[0] == c; }

    static std::string describe(const Token &t)
    {
        switch (t.type) {
        case Token::End: return "end of line";
        case Token::String: return "string";
        case Token::Number: return "'" + t.text + (t.imaginary ? "i'" : "'");
        default: return "'" + t.text + "'";
        }
    }

    void expect(char c)
    {
        if (!isPunct(peek(), c)) syntaxError(peek().column, std::string("expected '") + c + "', found " + describe(peek()));
        next();
    }

    Node expr()
    {
        if (++depth_ > kMaxDepth) syntaxError(peek().column, "nesting deeper than " + std::to_string(kMaxDepth));
        Node n = primary();
        // Element access: x[3], x[2, 5], x[3..20].
        while (isPunct(peek(), '[') && (n.type == Node::Ident || n.type == Node::Call || n.type == Node::Index)) {
            next();
            Node ix;
            ix.type = Node::Index;
            ix.kids.push_back(std::move(n));
            for (;;) {
                Node first = expr();
                if (isPunct(peek(), '.')) {
                    next();
                    Node range;
                    range.type = Node::Range;
                    range.kids.push_back(std::move(first));
                    range.kids.push_back(expr());
                    first = std::move(range);
                }
                ix.kids.push_back(std::move(first));
                if (isPunct(peek(), ',')) {
                    next();
                    continue;
                }
                expect(']');
                break;
            }
            n = std::move(ix);
        }
        --depth_;
        return n;
    }

    Node primary()
    {
        const Token &t = peek();
        if (t.type == Token::Number || isPunct(t, '+') || isPunct(t, '-')) return number();
        if (t.type == Token::String) {
            Node n;
            n.type = Node::String;
            n.text = next().text;
            return n;
        }
        if (isPunct(t, '[')) {
            next();
            Node n;
            n.type = Node::List;
            n.kids = items(']');
            return n;
        }
        if (t.type == Token::Ident) {
            Node n;
            n.text = next().text;
            if (!isPunct(peek(), '(')) {
                n.type = Node::Ident;
                return n;
            }
            next();
            if (n.text == "rtable") {
                n.type = Node::RTable;
                n.datatype = datatype();
                if (isPunct(peek(), ',')) {
                    next();
                    n.kids = items(')');
                } else {
                    expect(')');
                }
            } else {
                n.type = n.text == "print" ? Node::Print : Node::Call;
                n.kids = items(')');
            }
            return n;
        }
        syntaxError(t.column, "expected an expression, found " + describe(t));
    }

    // Comma-separated expressions up to the closing character (the opening
    // one has been taken).
    std::vector<Node> items(char close)
    {
        std::vector<Node> out;
        if (isPunct(peek(), close)) {
            next();
            return out;
        }
        for (;;) {
            out.push_back(expr());
            if (isPunct(peek(), ',')) {
                next();
                continue;
            }
            if (isPunct(peek(), close)) {
                next();
                return out;
            }
            syntaxError(peek().column, std::string("expected ',' or '") + close + "', found " + describe(peek()));
        }
    }

    // A signed number, or a real and an imaginary literal joined by + or -.
    Node number()
    {
        bool negative = false;
        if (peek().type == Token::Punct) {
            negative = next().text[0] == '-';
            if (peek().type != Token::Number) syntaxError(peek().column, "a sign must be followed by a number");
        }
        const Token &first = next();
        Node n;
        if (first.imaginary) {
            n.type = Node::Complex;
            n.im = real(first, negative);
            return n;
        }
        if (isPunct(peek(), '+') || isPunct(peek(), '-')) {
            const Token &op = next();
            if (peek().type != Token::Number || !peek().imaginary)
                syntaxError(op.column, "'" + op.text + "' only joins the real and imaginary parts of a complex literal such as 1+2i");
            n.type = Node::Complex;
            n.re = real(first, negative);
            n.im = real(next(), op.text[0] == '-');
            return n;
        }
        if (first.isFloat) {
            n.type = Node::Float;
            n.re = real(first, negative);
            return n;
        }
        n.type = Node::Integer;
        uint64_t magnitude = 0;
        auto [end, ec] = std::from_chars(first.text.data(), first.text.data() + first.text.size(), magnitude);
        const uint64_t limit = negative ? uint64_t(1) << 63 : (uint64_t(1) << 63) - 1;
        if (ec != std::errc() || end != first.text.data() + first.text.size() || magnitude > limit)
            syntaxError(first.column, "integer " + std::string(negative ? "-" : "") + first.text + " is outside the 64-bit range");
        n.integer = negative ? static_cast<int64_t>(0 - magnitude) : static_cast<int64_t>(magnitude);
        return n;
    }

    static double real(const Token &t, bool negative)
    {
        // strtod turns overflow into infinity, which is what the shell
        // documents for literals beyond the double range.
        double v = std::strtod(t.text.c_str(), nullptr);
        return negative ? -v : v;
    }

    // A datatype: a word, optionally followed by [size] or (datatype),
    // matched against the host's own datatype texts.
    int32_t datatype()
    {
        size_t column = peek().column;
        std::string text = datatypeText();
        for (int32_t code = 0; code <= kLastDatatype; ++code) {
            const char *known = orbhost::datatypeText(code);
            if (known && text == known) return code;
        }
        std::string all;
        for (int32_t code = 0; code <= kLastDatatype; ++code) {
            const char *known = orbhost::datatypeText(code);
            if (!known || !*known) continue;
            if (!all.empty()) all += ", ";
            all += known;
        }
        throw ShellError{"unknown datatype " + text + " at column " + std::to_string(column) + " (the datatypes are " + all + ")"};
    }

    std::string datatypeText()
    {
        if (peek().type != Token::Ident) syntaxError(peek().column, "expected a datatype such as float[8], found " + describe(peek()));
        std::string text = next().text;
        if (isPunct(peek(), '[')) {
            next();
            if (peek().type != Token::Number) syntaxError(peek().column, "expected a size in the datatype, found " + describe(peek()));
            text += "[" + next().text + "]";
            expect(']');
        } else if (isPunct(peek(), '(')) {
            next();
            text += "(" + datatypeText() + ")";
            expect(')');
        }
        return text;
    }

    std::vector<Token> t_;
    size_t pos_ = 0;
    int depth_ = 0;
};

// ---------------------------------------------------------- rtable elements

size_t elementSize(int32_t code)
{
    switch (code) {
    case 0: return sizeof(Value);       // anything
    case 1: return 2 * sizeof(Value);   // pairs of host values
    case 2: return 1;
    case 3: return 2;
    case 4: return 4;
    case 5: return 8;
    case 6: return 8;
    case 7: return 16;
    case 8: return 4;
    default: return 0;
    }
}

// The real and imaginary parts of a complex host object (header, re, im).
void complexParts(Value v, double &re, double &im)
{
    const uint64_t *words = reinterpret_cast<const uint64_t *>(v);
    std::memcpy(&re, &words[1], sizeof re);
    std::memcpy(&im, &words[2], sizeof im);
}

std::string indexText(const std::vector<int64_t> &index)
{
    std::string s;
    for (int64_t i : index) s += (s.empty() ? "" : ", ") + std::to_string(i);
    return index.size() == 1 ? s : "(" + s + ")";
}

// Writes one element into an rtable's storage, checking that it fits.
void storeElement(Host &host, int32_t code, Value v, unsigned char *dst, const std::vector<int64_t> &index)
{
    const char *dtText = orbhost::datatypeText(code);
    const std::string dt = dtText ? dtText : "?";
    auto fail = [&](const std::string &why) {
        throw ShellError{"element " + indexText(index) + " (" + host.print(v) + ") " + why};
    };
    const uint32_t kind = Host::kindOf(v);
    if (code == 0) {
        std::memcpy(dst, &v, sizeof v);
        return;
    }
    if (code == 1) {
        Value pair[2] = {v, host.integer(0)};
        if (kind == orbhost::kComplex) {
            double re, im;
            complexParts(v, re, im);
            pair[0] = host.float64(re);
            pair[1] = host.float64(im);
        }
        std::memcpy(dst, pair, sizeof pair);
        return;
    }
    if (code >= 2 && code <= 5) {
        if (!host.isInteger(v)) fail("is not an integer, as " + dt + " needs");
        int64_t x = host.toInteger(v);
        int bits = 8 << (code - 2);
        if (bits < 64) {
            int64_t lo = -(int64_t(1) << (bits - 1)), hi = (int64_t(1) << (bits - 1)) - 1;
            if (x < lo || x > hi) fail("does not fit in " + dt);
        }
        switch (code) {
        case 2: { int8_t y = static_cast<int8_t>(x); std::memcpy(dst, &y, 1); break; }
        case 3: { int16_t y = static_cast<int16_t>(x); std::memcpy(dst, &y, 2); break; }
        case 4: { int32_t y = static_cast<int32_t>(x); std::memcpy(dst, &y, 4); break; }
        default: std::memcpy(dst, &x, 8); break;
        }
        return;
    }
    double re = 0, im = 0;
    if (host.isInteger(v) || kind == orbhost::kFloat) {
        re = host.toFloat(v);
    } else if (kind == orbhost::kComplex) {
        if (code != 7) fail("is complex, but " + dt + " holds real numbers");
        complexParts(v, re, im);
    } else {
        fail("is not a number");
    }
    if (code == 6) {
        std::memcpy(dst, &re, 8);
    } else if (code == 8) {
        float f = static_cast<float>(re);
        std::memcpy(dst, &f, 4);
    } else {
        std::memcpy(dst, &re, 8);
        std::memcpy(dst + 8, &im, 8);
    }
}

}  // namespace

Statement parseLine(const std::string &line)
{
    return Parser(lex(line)).statement();
}

// ------------------------------------------------------------- evaluation

Shell::Shell(Host &host, const Library &library, std::ostream &out)
    : host_(host), library_(library), out_(out)
{
}

bool Shell::runLine(const std::string &line, int lineNumber)
{
    // The library's errors are shown as the host formatted them; the
    // shell's own name their line in a script.
    bool tolerated = false;
    auto report = [&](const std::string &message, bool withLine) {
        if (!tolerated) ++failures_;
        out_ << "Error, ";
        if (lineNumber > 0 && withLine) out_ << "line " << lineNumber << ": ";
        out_ << message << '\n';
    };
    try {
        Statement s = parseLine(line);
        tolerated = s.tolerated;
        const auto started = std::chrono::steady_clock::now();
        switch (s.type) {
        case Statement::Empty:
            break;
        case Statement::Help:
            out_ << (s.name.empty() ? helpText() : helpOn(s.name));
            break;
        case Statement::Quit:
            return false;
        case Statement::Bind:
            vars_[s.name] = eval(s.expr);
            break;
        case Statement::Store:
            store(s.target, eval(s.expr));
            break;
        case Statement::Show:
            if (s.expr.type == Node::Call && s.expr.text == "full" && !library_.find("full")) {
                if (s.expr.kids.size() != 1) throw ShellError{"full(x) takes one value"};
                out_ << host_.printFull(eval(s.expr.kids[0])) << '\n';
            } else if (s.expr.type == Node::Print) {
                std::string text;
                for (size_t i = 0; i < s.expr.kids.size(); ++i) {
                    if (i) text += ' ';
                    text += host_.messageForm(eval(s.expr.kids[i]));
                }
                out_ << text << '\n';
            } else {
                quiet_ = false;
                Value v = eval(s.expr);
                if (!quiet_) out_ << host_.print(v) << '\n';
            }
            break;
        }
        if (s.timed) {
            double ns = std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - started).count();
            out_ << "time: " << durationText(ns) << '\n';
        }
    } catch (const ShellError &e) {
        report(e.message, !e.fromLibrary);
    } catch (const std::bad_alloc &) {
        report("out of memory", true);
    } catch (const std::exception &e) {
        report(e.what(), true);
    }
    out_.flush();
    return true;
}

Value Shell::eval(const Node &n)
{
    switch (n.type) {
    case Node::Integer: return host_.integer(n.integer);
    case Node::Float: return host_.float64(n.re);
    case Node::Complex: return host_.complex(n.re, n.im);
    case Node::String: return host_.string(n.text);
    case Node::Ident: {
        auto it = vars_.find(n.text);
        return it != vars_.end() ? it->second : host_.name(n.text);
    }
    case Node::List: {
        std::vector<Value> items;
        for (const Node &k : n.kids) items.push_back(eval(k));
        return host_.list(items);
    }
    case Node::Call: return callExport(n);
    case Node::RTable: return makeRTable(n);
    case Node::Print: throw ShellError{"print(...) must stand alone on its line"};
    case Node::Index: return index(n);
    case Node::Range: throw ShellError{"a range such as 3..20 stands only inside [ ]"};
    }
    throw ShellError{"unknown expression"};
}

Value Shell::callExport(const Node &n)
{
    const Entry *e = library_.find(n.text);
    if (const Builtin *b = e ? nullptr : findBuiltin(n.text)) {
        std::vector<Value> args;
        for (const Node &k : n.kids) args.push_back(eval(k));
        return b->run(host_, args, out_, quiet_);
    }
    if (!e && n.text == "full") throw ShellError{"full(...) must stand alone on its line"};
    if (!e) {
        std::string near = suggest(n.text);
        throw ShellError{"unknown function " + n.text +
                         (near.empty() ? " (help lists what can be called)" : " (did you mean " + near + "?)")};
    }
    if (e->kind == EntryKind::Accessor)
        throw ShellError{n.text + " is an accessor, taking (callback table, host value); the shell calls only exports"};
    if (e->kind == EntryKind::Helper)
        throw ShellError{n.text + " is a helper with its own signature; the shell calls only exports"};
    if (!library_.loaded()) throw ShellError{"no library is loaded, so " + n.text + " cannot be called"};
    if (!e->symbol) throw ShellError{n.text + " is not implemented yet"};

    std::vector<Value> args;
    for (const Node &k : n.kids) args.push_back(eval(k));
    orbhost::CallResult r = host_.call(reinterpret_cast<orbhost::ExportFn>(e->symbol), args);
    if (!r.output.empty()) {
        out_ << r.output;
        if (r.output.back() != '\n') out_ << '\n';
    }
    if (r.raised) throw ShellError{r.error, true};
    return r.result;
}

Value Shell::makeRTable(const Node &n)
{
    const int32_t code = n.datatype;
    const size_t size = elementSize(code);
    if (size == 0) throw ShellError{std::string("the shell cannot make rtables of datatype ") + orbhost::datatypeText(code)};
    if (n.kids.empty()) throw ShellError{"rtable needs a list of elements or the dimensions after the datatype"};

    std::vector<Value> args;
    for (const Node &k : n.kids) args.push_back(eval(k));

    std::vector<int64_t> dims;
    std::vector<Value> flat;
    const bool fromList = args.size() == 1 && Host::kindOf(args[0]) == orbhost::kList;
    if (fromList) {
        // The shape follows the first element at each depth; every other
        // sublist must agree with it.
        for (Value v = args[0]; Host::kindOf(v) == orbhost::kList;) {
            std::vector<Value> items = host_.elements(v);
            dims.push_back(static_cast<int64_t>(items.size()));
            if (dims.size() > kMaxDims) throw ShellError{"rtables have at most " + std::to_string(kMaxDims) + " dimensions"};
            if (items.empty()) break;
            v = items[0];
        }
        std::vector<int64_t> index;
        auto flatten = [&](auto &self, Value v, size_t depth) -> void {
            if (depth == dims.size()) {
                if (Host::kindOf(v) == orbhost::kList)
                    throw ShellError{"element " + indexText(index) + " is a list, but the first element is not; nested lists must be rectangular"};
                flat.push_back(v);
                return;
            }
            if (Host::kindOf(v) != orbhost::kList)
                throw ShellError{"element " + indexText(index) + " is not a list, but the first element is; nested lists must be rectangular"};
            std::vector<Value> items = host_.elements(v);
            if (static_cast<int64_t>(items.size()) != dims[depth])
                throw ShellError{(index.empty() ? std::string("the list") : "the list at " + indexText(index)) + " has " +
                                 std::to_string(items.size()) + (items.size() == 1 ? " element" : " elements") +
                                 " where the first has " + std::to_string(dims[depth]) +
                                 "; nested lists must be rectangular"};
            for (size_t i = 0; i < items.size(); ++i) {
                index.push_back(static_cast<int64_t>(i) + 1);
                self(self, items[i], depth + 1);
                index.pop_back();
            }
        };
        flatten(flatten, args[0], 0);
    } else {
        if (args.size() > kMaxDims) throw ShellError{"rtables have at most " + std::to_string(kMaxDims) + " dimensions"};
        for (Value v : args) {
            if (!host_.isInteger(v) || host_.toInteger(v) < 0)
                throw ShellError{"rtable takes a list or non-negative integer dimensions after the datatype, not " + host_.print(v)};
            dims.push_back(host_.toInteger(v));
        }
    }

    uint64_t count = 1;
    for (int64_t d : dims) {
        if (d != 0 && count > kMaxRTableBytes / static_cast<uint64_t>(d)) throw ShellError{"rtable too large"};
        count *= static_cast<uint64_t>(d);
    }
    if (count > kMaxRTableBytes / size) throw ShellError{"rtable too large"};

    std::vector<std::pair<int64_t, int64_t>> bounds;
    for (int64_t d : dims) bounds.emplace_back(1, d);

    std::vector<unsigned char> data(count * size);
    if (fromList) {
        // Index of each element for messages: recomputed from its position.
        std::vector<int64_t> index(dims.size());
        for (uint64_t k = 0; k < count; ++k) {
            uint64_t rest = k;
            for (size_t d = dims.size(); d-- > 0;) {
                index[d] = static_cast<int64_t>(rest % dims[d]) + 1;
                rest /= dims[d];
            }
            storeElement(host_, code, flat[k], data.data() + k * size, index);
        }
    } else if (code == 0 || code == 1) {
        // Host-value rtables hold zero as a value, not as all-zero bits.
        Value zero = host_.integer(0);
        for (uint64_t k = 0; k < count * size / sizeof(Value); ++k) std::memcpy(data.data() + k * sizeof(Value), &zero, sizeof zero);
    }
    return host_.rtable(code, bounds, data.empty() ? nullptr : data.data());
}

namespace {

std::string lower(std::string s)
{
    for (char &c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

// Edit distance (insertions, deletions, substitutions, swaps of neighbours).
size_t distance(const std::string &a, const std::string &b)
{
    std::vector<std::vector<size_t>> d(a.size() + 1, std::vector<size_t>(b.size() + 1));
    for (size_t i = 0; i <= a.size(); ++i) d[i][0] = i;
    for (size_t j = 0; j <= b.size(); ++j) d[0][j] = j;
    for (size_t i = 1; i <= a.size(); ++i)
        for (size_t j = 1; j <= b.size(); ++j) {
            d[i][j] = std::min({d[i - 1][j] + 1, d[i][j - 1] + 1, d[i - 1][j - 1] + (a[i - 1] != b[j - 1])});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) d[i][j] = std::min(d[i][j], d[i - 2][j - 2] + 1);
        }
    return d[a.size()][b.size()];
}

// An index value: an integer, else an error naming what was given.
int64_t indexValue(Host &host, Value v)
{
    if (!host.isInteger(v)) throw ShellError{"an index must be an integer, not " + host.print(v)};
    return host.toInteger(v);
}

}  // namespace

std::string durationText(double ns)
{
    char buf[48];
    if (ns < 1e3) std::snprintf(buf, sizeof buf, "%.0f ns", ns);
    else if (ns < 1e6) std::snprintf(buf, sizeof buf, "%.4g us", ns / 1e3);
    else if (ns < 1e9) std::snprintf(buf, sizeof buf, "%.4g ms", ns / 1e6);
    else std::snprintf(buf, sizeof buf, "%.4g s", ns / 1e9);
    return buf;
}

// x[i], x[i, j, ...] (one index per dimension, within the bounds) and
// x[a..b] of a one-dimensional rtable or a list (a new rtable or list).
Value Shell::index(const Node &n)
{
    Value base = eval(n.kids[0]);
    const size_t given = n.kids.size() - 1;
    if (Host::kindOf(base) == orbhost::kList || Host::kindOf(base) == orbhost::kExprSeq) {
        // Lists, and the sequences exports return (an index with its value).
        std::vector<Value> items = host_.elements(base);
        if (given != 1) throw ShellError{"a list takes one index"};
        const Node &k = n.kids[1];
        int64_t lo = indexValue(host_, eval(k.type == Node::Range ? k.kids[0] : k));
        int64_t hi = k.type == Node::Range ? indexValue(host_, eval(k.kids[1])) : lo;
        const int64_t size = int64_t(items.size());
        for (int64_t x : {lo, hi})
            if (x < 1 || x > size)
                throw ShellError{"index " + std::to_string(x) + " is outside the list's 1.." + std::to_string(size)};
        if (k.type != Node::Range) return items[size_t(lo - 1)];
        std::vector<Value> part;
        for (int64_t i = lo; i <= hi; ++i) part.push_back(items[size_t(i - 1)]);
        return host_.list(part);
    }
    if (!host_.isRTable(base)) throw ShellError{host_.print(base) + " has no elements to index"};
    orbhost::RTableInfo info = host_.rtableInfo(base);
    const size_t dims = info.bounds.size();
    if (given != dims)
        throw ShellError{"the rtable has " + std::to_string(dims) + (dims == 1 ? " dimension" : " dimensions") + ", but " +
                         std::to_string(given) + (given == 1 ? " index was" : " indices were") + " given"};
    auto checked = [&](int64_t x, size_t d) {
        auto [lo, hi] = info.bounds[d];
        if (x < lo || x > hi)
            throw ShellError{"index " + std::to_string(x) + " is outside " + std::to_string(lo) + ".." + std::to_string(hi)};
        return x - lo;
    };
    if (n.kids[1].type == Node::Range) {
        if (dims != 1) throw ShellError{"ranges index one-dimensional rtables only"};
        int64_t lo = checked(indexValue(host_, eval(n.kids[1].kids[0])), 0);
        int64_t hi = checked(indexValue(host_, eval(n.kids[1].kids[1])), 0);
        if (hi < lo) throw ShellError{"a range runs from its first index up to its last"};
        const size_t size = elementSize(info.datatype);
        const auto *b = static_cast<const unsigned char *>(info.data) + size_t(lo) * size;
        std::vector<unsigned char> bytes(b, b + size_t(hi - lo + 1) * size);
        return host_.rtable(info.datatype, {{1, hi - lo + 1}}, bytes.data());
    }
    int64_t flat = 0;
    for (size_t d = 0; d < dims; ++d) {
        if (n.kids[d + 1].type == Node::Range) throw ShellError{"ranges index one-dimensional rtables only"};
        auto [lo, hi] = info.bounds[d];
        flat = flat * (hi - lo + 1) + checked(indexValue(host_, eval(n.kids[d + 1])), d);
    }
    return host_.element(base, flat);
}

// x[i] = v: one element of a bound rtable, checked as rtable(...) checks it.
void Shell::store(const Node &target, Value v)
{
    auto it = vars_.find(target.kids[0].text);
    if (it == vars_.end() || !host_.isRTable(it->second))
        throw ShellError{target.kids[0].text + " is not a bound rtable, so its elements cannot be set"};
    orbhost::RTableInfo info = host_.rtableInfo(it->second);
    const size_t given = target.kids.size() - 1, dims = info.bounds.size();
    if (given != dims)
        throw ShellError{"the rtable has " + std::to_string(dims) + (dims == 1 ? " dimension" : " dimensions") + ", but " +
                         std::to_string(given) + (given == 1 ? " index was" : " indices were") + " given"};
    std::vector<int64_t> at;
    int64_t flat = 0;
    for (size_t d = 0; d < dims; ++d) {
        int64_t x = indexValue(host_, eval(target.kids[d + 1]));
        auto [lo, hi] = info.bounds[d];
        if (x < lo || x > hi)
            throw ShellError{"index " + std::to_string(x) + " is outside " + std::to_string(lo) + ".." + std::to_string(hi)};
        at.push_back(x);
        flat = flat * (hi - lo + 1) + (x - lo);
    }
    const size_t size = elementSize(info.datatype);
    if (size == 0) throw ShellError{"the shell cannot set elements of this datatype"};
    storeElement(host_, info.datatype, v, static_cast<unsigned char *>(info.data) + size_t(flat) * size, at);
}

std::vector<std::string> Shell::words() const
{
    std::vector<std::string> w = {"help", "quit", "exit", "time", "try", "print", "full", "rtable",
                                  "true", "false", "inf", "nan"};
    for (const Builtin &b : builtins()) w.push_back(b.name);
    for (const auto &[name, value] : vars_) w.push_back(name);
    for (const Entry &e : library_.entries())
        if (e.kind == EntryKind::Export && e.symbol) w.push_back(e.name);
    std::sort(w.begin(), w.end());
    w.erase(std::unique(w.begin(), w.end()), w.end());
    return w;
}

// The closest known word to a misspelt name, or nothing when none is close.
std::string Shell::suggest(const std::string &name) const
{
    std::string best;
    size_t bestDistance = std::max<size_t>(2, name.size() / 4) + 1;
    for (const std::string &w : words()) {
        size_t d = distance(lower(name), lower(w));
        if (d < bestDistance) {
            bestDistance = d;
            best = w;
        }
    }
    return best;
}

std::string Shell::helpOn(const std::string &name) const
{
    const Entry *e = library_.find(name);
    if (const Builtin *b = e ? nullptr : findBuiltin(name)) return std::string(b->usage) + "\n";
    if (!e) {
        std::string near = suggest(name);
        return "No export or statement is called " + name + (near.empty() ? "" : "; did you mean " + near + "?") + "\n";
    }
    std::string kind = e->kind == EntryKind::Export ? "an export" : e->kind == EntryKind::Accessor ? "an accessor" : "a helper";
    std::string text = name + " is " + kind + (e->symbol ? "" : ", not implemented yet") + ".\n";
    if (const ExportHelp *h = e->kind == EntryKind::Export ? findExportHelp(name) : nullptr)
        text += std::string("  ") + h->what + "\n  Family:     " + h->family + "\n  Arguments:  " + h->counts +
                "\n  Argument 1: " + h->datatypes + "\n  Example:    " + h->example + "\n";
    return text;
}

std::string Shell::helpText() const
{
    std::ostringstream s;
    s << "One statement per line; # starts a comment.\n"
         "  x = EXPR            bind x (prints nothing)\n"
         "  EXPR                print the value\n"
         "  print(EXPR, ...)    print values side by side, strings as bare text\n"
         "  x[i] = EXPR         set one element of the rtable x\n"
         "  time STATEMENT      run it and print its wall time\n"
         "  try STATEMENT       run it; an error is shown but not counted as a failure\n"
         "  help, help NAME     this text, or what NAME is\n"
         "  full(EXPR)          print the value with every element of an rtable\n"
         "  quit, exit          leave\n"
         "Expressions:\n"
         "  42  -7              integers (64-bit)\n"
         "  1.5  .5  2.  1e-3   floats; also inf, -inf, nan (1e999 is inf too)\n"
         "  2i  1+2i  -1.5-0.5i complex literals (no other arithmetic)\n"
         "  \"text\"              strings, escapes \\\" \\\\ \\n \\t\n"
         "  [a, b, c]           lists\n"
         "  x                   a bound variable, else the name x (true, false are names)\n"
         "  f(a, b)             call the library export f\n"
         "  x[12]  x[2, 3]      an element (from the rtable's bounds); x[3..20] a part\n"
         "The shell's own functions (help NAME for each):\n"
         "  length(x)  readaudio(\"f.wav\")  writeaudio(\"f.wav\", x, rate)  readtext(\"f.csv\")\n"
         "  writetext(\"f.csv\", x)  plot(y)  plot(x, y)  plot(y, \"f.png\")\n"
         "  rtable(float[8], [1, 2, 3])      rtable from a (nested) list\n"
         "  rtable(complex[8], 4)            zero-filled; rtable(float[4], 2, 3) is 2 x 3\n"
         "Datatypes: integer[1], integer[2], integer[4], integer[8], float[4], float[8],\n"
         "complex[8], anything, complex(anything).\n"
         "Errors print as \"Error, ...\" and the shell goes on.\n";
    if (!library_.loaded()) {
        s << "\nNo library is loaded.\n";
        return s.str();
    }
    std::vector<std::string> have;
    size_t missing = 0;
    for (const Entry &e : library_.entries()) {
        if (e.kind != EntryKind::Export) continue;
        if (e.symbol)
            have.push_back(e.name);
        else
            ++missing;
    }
    // Grouped under the families of the help table, in its order; exports
    // the table lacks go under Other.
    std::vector<std::pair<std::string, std::vector<std::string>>> groups;
    auto groupOf = [&](const std::string &family) -> std::vector<std::string> & {
        for (auto &g : groups)
            if (g.first == family) return g.second;
        return groups.emplace_back(family, std::vector<std::string>{}).second;
    };
    for (const ExportHelp &h : exportHelp()) groupOf(h.family);
    for (const std::string &name : have) {
        const ExportHelp *h = findExportHelp(name);
        groupOf(h ? h->family : "Other").push_back(name);
    }
    s << "\nExports of " << library_.path() << " (" << have.size() << "), by family (help NAME for each):\n";
    size_t width = 0;
    for (const std::string &h : have) width = std::max(width, h.size());
    const size_t perLine = std::max<size_t>(1, 78 / (width + 2));
    for (const auto &[family, names] : groups) {
        if (names.empty()) continue;
        s << family << ":\n";
        for (size_t i = 0; i < names.size(); ++i) {
            s << (i % perLine ? "  " : "    ") << names[i];
            if ((i + 1) % perLine == 0 || i + 1 == names.size())
                s << '\n';
            else
                s << std::string(width - names[i].size(), ' ');
        }
    }
    s << missing << " more export" << (missing == 1 ? " is" : "s are") << " still to come.\n";
    return s.str();
}

}  // namespace orbsh
