#pragma once

#include <QString>
#include <algorithm>
#include <vector>

#include "platform/access_sql/Ast.h"

namespace tarmel::access_sql {

/// How deep expressions, joins and sub-selects may be bracketed in one another.
inline constexpr int kDeepestNesting = 25;
/// How many levels the tree of one expression may have: what a chain like a=1 OR a=2 OR ... comes to.
inline constexpr int kDeepestTree = 400;
inline constexpr std::size_t kMostTables = 60;   ///< of one SELECT
inline constexpr std::size_t kMostUnions = 100;  ///< of one query

/// Recursive descent: one function for each rule of the grammar, operators by their table. What is not
/// understood is an error that names its place. The text outlives what parse() returns.
class Parser {
 public:
    explicit Parser(const QString& sql);
    /// The one statement of the text; a ";" may follow, nothing else.
    [[nodiscard]] Statement parse();

 private:
    class Nesting;

    // Statements
    [[nodiscard]] Query query();
    [[nodiscard]] Select select();
    void selectHead(Select& select);
    [[nodiscard]] Output output();
    [[nodiscard]] std::vector<OrderItem> orderBy();
    [[nodiscard]] Insert insert();
    [[nodiscard]] Update update();
    [[nodiscard]] Delete deletion();

    // Tables
    void from(Select& select);
    [[nodiscard]] std::unique_ptr<JoinTree> joined(Select& select);
    [[nodiscard]] std::unique_ptr<JoinTree> joinOperand(Select& select);
    [[nodiscard]] std::unique_ptr<JoinTree> source(Select& select);
    [[nodiscard]] bool joinWord(JoinTree::Kind& kind);

    // Definitions (ParserDefinitions.cpp)
    [[nodiscard]] Statement creation();
    [[nodiscard]] NewView view();
    [[nodiscard]] CreateTable table();
    void columnClauses(CreateTable& definition, ColumnDef& column);
    [[nodiscard]] ColumnDef column();
    [[nodiscard]] QString defaultValue();
    [[nodiscard]] std::vector<QString> keyColumns();
    [[nodiscard]] Definition alteration();
    [[nodiscard]] AddForeignKey foreignKey(QStringView table, QStringView name);
    [[nodiscard]] Definition drop();
    [[nodiscard]] int wholeNumber();

    // Expressions
    [[nodiscard]] ExpressionPtr expression(int level = 0);
    [[nodiscard]] ExpressionPtr operand();
    [[nodiscard]] ExpressionPtr primary();
    [[nodiscard]] ExpressionPtr columnName();
    [[nodiscard]] ExpressionPtr call();
    [[nodiscard]] ExpressionPtr comparisonWith(ExpressionPtr left);
    [[nodiscard]] ExpressionPtr inWith(ExpressionPtr left, bool negated);
    [[nodiscard]] bool atComparisonWord() const;
    [[nodiscard]] std::vector<ExpressionPtr> expressions();
    template <typename Node>
    [[nodiscard]] static ExpressionPtr made(qsizetype position, Node node, int depthBelow = 0);

    // Tokens
    [[nodiscard]] const Token& current() const { return tokens_[place_]; }
    [[nodiscard]] const Token& following() const { return tokens_[std::min(place_ + 1, tokens_.size() - 1)]; }
    [[nodiscard]] bool at(TokenKind kind) const { return current().kind == kind; }
    [[nodiscard]] bool atWord(QStringView word) const { return isWord(current(), word); }
    [[nodiscard]] static bool isWord(const Token& token, QStringView word);
    const Token& take();
    bool takeIf(TokenKind kind);
    bool takeIfWord(QStringView word);
    void expect(TokenKind kind);
    void expectWord(QStringView word);
    [[nodiscard]] QStringView name();
    [[nodiscard]] QStringView alias();
    [[noreturn]] void refuse() const;

    const QString& sql_;
    std::vector<Token> tokens_;
    std::size_t place_ = 0;
    int nesting_ = 0;
};

}  // namespace tarmel::access_sql
