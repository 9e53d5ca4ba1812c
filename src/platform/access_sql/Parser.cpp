#include "platform/access_sql/Parser.h"

#include <algorithm>
#include <array>

#include "platform/access_sql/Errors.h"
#include "platform/access_sql/FunctionTable.h"
#include "platform/access_sql/Lexer.h"

namespace tarmel::access_sql {

namespace {

// Words that cannot be names unless they are bracketed.
constexpr std::array<QStringView, 34> kReserved = {
    u"ALL",    u"AND",    u"AS",    u"BETWEEN", u"BY",     u"CREATE", u"DELETE", u"DISTINCT", u"DISTINCTROW",
    u"EXISTS", u"FROM",   u"GROUP", u"HAVING",  u"IN",     u"INNER",  u"INSERT", u"INTO",     u"IS",
    u"JOIN",   u"LEFT",   u"LIKE",  u"MOD",     u"NOT",    u"NULL",   u"ON",     u"OR",       u"ORDER",
    u"RIGHT",  u"SELECT", u"SET",   u"UNION",   u"UPDATE", u"VALUES", u"WHERE"};

bool isReserved(const Token& token) {
    if (token.kind != TokenKind::Name || token.bracketed) return false;
    return std::any_of(kReserved.begin(), kReserved.end(), [&](QStringView word) {
        return word.size() == token.text.size() && word.compare(token.text, Qt::CaseInsensitive) == 0;
    });
}

std::vector<Token> tokensOf(const QString& sql) {
    std::vector<Token> tokens;
    tokens.reserve(static_cast<std::size_t>(sql.size() / 4) + 4);
    Lexer lexer(sql);
    int literals = 0, parameters = 0;
    do {
        Token token = lexer.next();
        if (token.isLiteral() && !token.fixed) token.index = literals++;
        if (token.kind == TokenKind::Parameter) token.index = parameters++;
        tokens.push_back(token);
    } while (tokens.back().kind != TokenKind::End);
    return tokens;
}

int depthOf(const ExpressionPtr& expression) {
    return expression->depth;
}
int depthOf(const std::vector<ExpressionPtr>& expressions) {
    int depth = 0;
    for (const ExpressionPtr& expression : expressions)
        depth = std::max(depth, expression->depth);
    return depth;
}

}  // namespace

/// Counts one level of bracketing for as long as it lives.
class Parser::Nesting {
 public:
    explicit Nesting(Parser& parser) : parser_(parser) {
        if (++parser_.nesting_ > kDeepestNesting) throw tooComplex();
    }
    ~Nesting() { --parser_.nesting_; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

 private:
    Parser& parser_;
};

Parser::Parser(const QString& sql) : sql_(sql), tokens_(tokensOf(sql)) {}

// ---- Tokens

bool Parser::isWord(const Token& token, QStringView word) {
    return token.kind == TokenKind::Name && !token.bracketed && token.text.size() == word.size() &&
           token.text.compare(word, Qt::CaseInsensitive) == 0;
}

const Token& Parser::take() {
    const Token& token = tokens_[place_];
    if (place_ + 1 < tokens_.size()) ++place_;
    return token;
}

bool Parser::takeIf(TokenKind kind) {
    if (!at(kind)) return false;
    take();
    return true;
}

bool Parser::takeIfWord(QStringView word) {
    if (!atWord(word)) return false;
    take();
    return true;
}

void Parser::expect(TokenKind kind) {
    if (!takeIf(kind)) refuse();
}

void Parser::expectWord(QStringView word) {
    if (!takeIfWord(word)) refuse();
}

void Parser::refuse() const {
    throw syntaxError(QStringView(sql_).sliced(current().position), current().position);
}

QStringView Parser::name() {
    if (!at(TokenKind::Name) || isReserved(current())) refuse();
    return take().text;
}

/// Behind AS any word serves: "AS Year", "AS Left".
QStringView Parser::alias() {
    if (!at(TokenKind::Name)) refuse();
    return take().text;
}

// ---- Statements

Statement Parser::parse() {
    Statement statement;
    if (atWord(u"SELECT")) {
        statement = query();
    } else if (takeIfWord(u"INSERT")) {
        statement = insert();
    } else if (takeIfWord(u"UPDATE")) {
        statement = update();
    } else if (takeIfWord(u"DELETE")) {
        statement = deletion();
    } else if (takeIfWord(u"CREATE")) {
        statement = creation();
    } else if (takeIfWord(u"ALTER")) {
        statement = alteration();
    } else if (takeIfWord(u"DROP")) {
        statement = drop();
    } else {
        throw statementError(
            QStringLiteral("Instrucción SQL no válida; se esperaba «DELETE», «INSERT», «SELECT», «UPDATE», "
                           "«CREATE», «ALTER» o «DROP»."));
    }
    if (takeIf(TokenKind::Semicolon) && !at(TokenKind::End)) {
        throw statementError(
            QStringLiteral("Se encontraron caracteres después del final de la instrucción SQL."));
    }
    if (!at(TokenKind::End)) refuse();
    return statement;
}

Query Parser::query() {
    const Nesting level(*this);
    Query result;
    result.parts.push_back(select());
    while (takeIfWord(u"UNION")) {
        result.all.push_back(takeIfWord(u"ALL"));
        result.parts.push_back(select());
        if (result.parts.size() > kMostUnions) throw tooComplex();
    }
    if (atWord(u"ORDER")) result.orderBy = orderBy();
    return result;
}

Select Parser::select() {
    Select result;
    expectWord(u"SELECT");
    selectHead(result);
    do {
        result.outputs.push_back(output());
    } while (takeIf(TokenKind::Comma));
    if (takeIfWord(u"FROM")) from(result);
    if (takeIfWord(u"WHERE")) result.where = expression();
    if (takeIfWord(u"GROUP")) {
        expectWord(u"BY");
        result.groupBy = expressions();
    }
    if (takeIfWord(u"HAVING")) result.having = expression();
    return result;
}

void Parser::selectHead(Select& select) {
    if (takeIfWord(u"DISTINCT")) {
        select.distinct = true;
    } else if (takeIfWord(u"DISTINCTROW")) {
        select.distinctRow = true;
    } else {
        takeIfWord(u"ALL");
    }
    if (!atWord(u"TOP") || following().kind != TokenKind::Whole) return;
    take();
    select.top = Top{take().text.toLongLong(), false};
    select.top->percent = takeIfWord(u"PERCENT");
}

Output Parser::output() {
    Output result;
    if (takeIf(TokenKind::Star)) return result;
    const bool starOfTable = at(TokenKind::Name) && following().kind == TokenKind::Dot &&
                             place_ + 2 < tokens_.size() && tokens_[place_ + 2].kind == TokenKind::Star;
    if (starOfTable) {
        result.starOf = name();
        take();
        take();
        return result;
    }
    result.value = expression();
    if (takeIfWord(u"AS")) result.name = alias().toString();
    return result;
}

std::vector<OrderItem> Parser::orderBy() {
    expectWord(u"ORDER");
    expectWord(u"BY");
    std::vector<OrderItem> items;
    do {
        OrderItem item;
        item.value = expression();
        item.descending = takeIfWord(u"DESC");
        if (!item.descending) takeIfWord(u"ASC");
        items.push_back(std::move(item));
    } while (takeIf(TokenKind::Comma));
    return items;
}

Insert Parser::insert() {
    Insert result;
    expectWord(u"INTO");
    result.table = name();
    if (takeIf(TokenKind::LeftParenthesis)) {
        do {
            result.columns.push_back(name());
        } while (takeIf(TokenKind::Comma));
        expect(TokenKind::RightParenthesis);
    }
    if (takeIfWord(u"VALUES")) {
        expect(TokenKind::LeftParenthesis);
        result.values = expressions();
        expect(TokenKind::RightParenthesis);
    } else {
        result.query = std::make_unique<Query>(query());
    }
    return result;
}

Update Parser::update() {
    Update result;
    from(result.rows);
    expectWord(u"SET");
    do {
        Assignment assignment;
        assignment.column = columnName();
        expect(TokenKind::Equal);
        assignment.value = expression();
        result.assignments.push_back(std::move(assignment));
    } while (takeIf(TokenKind::Comma));
    if (takeIfWord(u"WHERE")) result.rows.where = expression();
    return result;
}

Delete Parser::deletion() {
    Delete result;
    if (!takeIf(TokenKind::Star) && !atWord(u"FROM")) {
        result.target = name();
        expect(TokenKind::Dot);
        expect(TokenKind::Star);
    }
    expectWord(u"FROM");
    from(result.rows);
    if (takeIfWord(u"WHERE")) result.rows.where = expression();
    return result;
}

// ---- Tables

void Parser::from(Select& select) {
    select.from = joined(select);
    while (takeIf(TokenKind::Comma)) {
        auto both = std::make_unique<JoinTree>();
        both->kind = JoinTree::Kind::Inner;
        both->left = std::move(select.from);
        both->right = joined(select);
        select.from = std::move(both);
    }
}

std::unique_ptr<JoinTree> Parser::joined(Select& select) {
    std::unique_ptr<JoinTree> left = joinOperand(select);
    JoinTree::Kind kind;
    while (joinWord(kind)) {
        auto both = std::make_unique<JoinTree>();
        both->kind = kind;
        both->left = std::move(left);
        both->right = joinOperand(select);
        expectWord(u"ON");
        both->on = expression();
        left = std::move(both);
    }
    return left;
}

bool Parser::joinWord(JoinTree::Kind& kind) {
    if (takeIfWord(u"INNER")) {
        kind = JoinTree::Kind::Inner;
    } else if (takeIfWord(u"LEFT")) {
        kind = JoinTree::Kind::Left;
        takeIfWord(u"OUTER");
    } else if (takeIfWord(u"RIGHT")) {
        kind = JoinTree::Kind::Right;
        takeIfWord(u"OUTER");
    } else {
        return false;
    }
    expectWord(u"JOIN");
    return true;
}

std::unique_ptr<JoinTree> Parser::joinOperand(Select& select) {
    if (!at(TokenKind::LeftParenthesis) || isWord(following(), u"SELECT")) return source(select);
    const Nesting level(*this);
    take();
    std::unique_ptr<JoinTree> inside = joined(select);
    expect(TokenKind::RightParenthesis);
    return inside;
}

std::unique_ptr<JoinTree> Parser::source(Select& select) {
    Source result;
    result.position = current().position;
    if (takeIf(TokenKind::LeftParenthesis)) {
        result.query = std::make_unique<Query>(query());
        expect(TokenKind::RightParenthesis);
    } else {
        result.table = name();
    }
    if (takeIfWord(u"AS")) {
        result.alias = alias();
    } else if (at(TokenKind::Name) && !isReserved(current())) {
        result.alias = name();
    }
    auto tree = std::make_unique<JoinTree>();
    tree->source = select.sources.size();
    select.sources.push_back(std::move(result));
    if (select.sources.size() > kMostTables) throw tooComplex();
    return tree;
}

// ---- Expressions

template <typename Node>
ExpressionPtr Parser::made(qsizetype position, Node node, int depthBelow) {
    if (depthBelow >= kDeepestTree) throw tooComplex();
    auto result = std::make_unique<Expression>();
    result->node = std::move(node);
    result->position = position;
    result->depth = depthBelow + 1;
    return result;
}

std::vector<ExpressionPtr> Parser::expressions() {
    std::vector<ExpressionPtr> result;
    do {
        result.push_back(expression());
    } while (takeIf(TokenKind::Comma));
    return result;
}

/// An expression whose operators bind at least as tightly as `level`.
ExpressionPtr Parser::expression(int level) {
    ExpressionPtr left = operand();
    while (true) {
        if (atComparisonWord()) {
            if (kComparisonLevel < level) return left;
            left = comparisonWith(std::move(left));
            continue;
        }
        const OperatorFacts* facts = binaryOperator(current());
        if (!facts || facts->level < level) return left;
        take();
        ExpressionPtr right = expression(facts->level + 1);
        const int depth = std::max(left->depth, right->depth);
        const qsizetype position = left->position;
        left = made(position, Binary{facts->op, std::move(left), std::move(right)}, depth);
    }
}

ExpressionPtr Parser::operand() {
    const Nesting level(*this);
    const qsizetype position = current().position;
    for (const Operator op : {Operator::Not, Operator::Negate}) {
        const bool here = op == Operator::Not ? atWord(u"NOT") : at(TokenKind::Minus);
        if (!here) continue;
        take();
        ExpressionPtr value = expression(factsOf(op).level);
        const int depth = value->depth;
        return made(position, Unary{op, std::move(value)}, depth);
    }
    if (takeIf(TokenKind::Plus)) return expression(factsOf(Operator::Negate).level);
    return primary();
}

bool Parser::atComparisonWord() const {
    if (atWord(u"IS") || atWord(u"IN") || atWord(u"BETWEEN")) return true;
    if (!atWord(u"NOT")) return false;
    return isWord(following(), u"IN") || isWord(following(), u"BETWEEN") || isWord(following(), u"LIKE");
}

ExpressionPtr Parser::comparisonWith(ExpressionPtr left) {
    const qsizetype position = left->position;
    if (takeIfWord(u"IS")) {
        const bool negated = takeIfWord(u"NOT");
        expectWord(u"NULL");
        const int depth = left->depth;
        return made(position, NullTest{std::move(left), negated}, depth);
    }
    const bool negated = takeIfWord(u"NOT");
    if (takeIfWord(u"IN")) return inWith(std::move(left), negated);
    if (takeIfWord(u"LIKE")) {
        ExpressionPtr pattern = expression(kComparisonLevel + 1);
        const int depth = std::max(left->depth, pattern->depth);
        return made(position, Binary{Operator::Like, std::move(left), std::move(pattern), negated}, depth);
    }
    expectWord(u"BETWEEN");
    ExpressionPtr low = expression(kComparisonLevel + 1);
    expectWord(u"AND");
    ExpressionPtr high = expression(kComparisonLevel + 1);
    const int depth = std::max({left->depth, low->depth, high->depth});
    return made(position, Between{std::move(left), std::move(low), std::move(high), negated}, depth);
}

ExpressionPtr Parser::inWith(ExpressionPtr left, bool negated) {
    const qsizetype position = left->position;
    expect(TokenKind::LeftParenthesis);
    if (atWord(u"SELECT")) {
        auto rows = std::make_unique<Query>(query());
        expect(TokenKind::RightParenthesis);
        const int depth = left->depth;
        return made(position, InQuery{std::move(left), std::move(rows), negated}, depth);
    }
    std::vector<ExpressionPtr> items = expressions();
    expect(TokenKind::RightParenthesis);
    const int depth = std::max(depthOf(left), depthOf(items));
    return made(position, InList{std::move(left), std::move(items), negated}, depth);
}

ExpressionPtr Parser::primary() {
    const qsizetype position = current().position;
    if (current().isLiteral()) return made(position, Literal{take()});
    if (at(TokenKind::Parameter)) return made(position, Parameter{take().index});
    if (takeIf(TokenKind::LeftParenthesis)) {
        ExpressionPtr inside;
        if (atWord(u"SELECT")) {
            auto rows = std::make_unique<Query>(query());
            inside = made(position, ScalarQuery{std::move(rows)});
        } else {
            inside = expression();
        }
        expect(TokenKind::RightParenthesis);
        return inside;
    }
    if (takeIfWord(u"NULL")) return made(position, Constant::Null);
    if (at(TokenKind::Name) && following().kind == TokenKind::LeftParenthesis) {
        if (!atWord(u"EXISTS")) return call();
        take();
        take();
        auto rows = std::make_unique<Query>(query());
        expect(TokenKind::RightParenthesis);
        return made(position, Exists{std::move(rows)});
    }
    const bool plainWord = following().kind != TokenKind::Dot;
    if (plainWord && (takeIfWord(u"TRUE") || takeIfWord(u"YES"))) return made(position, Constant::True);
    if (plainWord && (takeIfWord(u"FALSE") || takeIfWord(u"NO"))) return made(position, Constant::False);
    return columnName();
}

ExpressionPtr Parser::columnName() {
    const qsizetype position = current().position;
    ColumnName column;
    column.name = name();
    if (takeIf(TokenKind::Dot)) {
        column.table = column.name;
        column.name = alias();
    }
    return made(position, column);
}

ExpressionPtr Parser::call() {
    const qsizetype position = current().position;
    const Token& word = take();
    const FunctionFacts* function = word.bracketed ? nullptr : functionNamed(word.text);
    if (!function) {
        throw statementError(QStringLiteral("Función '%1' no definida en la expresión.").arg(word.text));
    }
    take();
    Call result;
    result.function = function;
    if (function->id == Function::Count && takeIf(TokenKind::Star)) {
        result.star = true;
    } else if (!at(TokenKind::RightParenthesis)) {
        result.arguments = expressions();
    }
    expect(TokenKind::RightParenthesis);
    const int count = static_cast<int>(result.arguments.size());
    if (!result.star && (count < function->fewest || count > function->most)) {
        throw statementError(
            QStringLiteral("Número de argumentos no válido en la función '%1'.").arg(word.text));
    }
    const int depth = depthOf(result.arguments);
    return made(position, std::move(result), depth);
}

}  // namespace tarmel::access_sql
