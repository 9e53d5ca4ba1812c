#include "platform/access_sql/Errors.h"
#include "platform/access_sql/ExpressionFacts.h"
#include "platform/access_sql/FunctionTable.h"
#include "platform/access_sql/Writer.h"

/// The writer's part for functions.
namespace tarmel::access_sql {

void Writer::call(const Expression& expression, const Call& call) {
    const auto argument = [&call](std::size_t i) -> const Expression& { return *call.arguments[i]; };
    const FunctionFacts& function = *call.function;
    if (function.aggregate) return aggregate(call);
    switch (function.id) {
        case Function::IIf:
            out_ += "CASE WHEN ";
            condition(argument(0));
            out_ += " THEN ";
            branch(argument(1), expression.type);
            out_ += " ELSE ";
            branch(argument(2), expression.type);
            out_ += " END";
            return;
        case Function::Nz:
            out_ += "coalesce(";
            branch(argument(0), expression.type);
            out_ += ", ";
            if (call.arguments.size() == 2) {
                branch(argument(1), expression.type);
            } else {
                const Kind kind = kindOf(argument(0));
                out_ += kind == Kind::Number || kind == Kind::Boolean ? "0" : "''";
            }
            out_ += ")";
            return;
        case Function::Year:
            return datePart(call, 1, 4);
        case Function::Month:
            return datePart(call, 6, 2);
        case Function::Day:
            return datePart(call, 9, 2);
        case Function::Hour:
            return datePart(call, 12, 2);
        case Function::Minute:
            return datePart(call, 15, 2);
        case Function::Second:
            return datePart(call, 18, 2);
        case Function::CDate:
            return date(argument(0));
        case Function::CStr:
            return text(argument(0));
        case Function::CDbl:
            return number(argument(0), kOperandLevel);
        case Function::Val:
            if (kindOf(argument(0)) != Kind::Text) return number(argument(0), kOperandLevel);
            out_ += plain_ ? "CAST(" : "tarmel_val(";
            value(argument(0));
            out_ += plain_ ? " AS REAL)" : ")";
            return;
        case Function::Abs:
            out_ += "abs(";
            number(argument(0));
            out_ += ")";
            return;
        case Function::CInt:
            return ownCall("tarmel_cint", {&argument(0)});
        case Function::CLng:
            return ownCall("tarmel_clng", {&argument(0)});
        case Function::Int:
            return ownCall("tarmel_int", {&argument(0)});
        case Function::Format:
            if (plain_) throw notForViews(function.name);
            out_ += "tarmel_format(";
            joinable(argument(0));
            out_ += ", ";
            if (call.arguments.size() == 2) {
                value(argument(1));
            } else {
                out_ += "''";
            }
            out_ += ")";
            return;
        default:
            return plainCall(call);
    }
}

/// A function of texts and numbers, under our own name or SQLite's.
void Writer::plainCall(const Call& call) {
    const FunctionFacts& function = *call.function;
    const bool searchFrom = function.id == Function::InStr && call.arguments.size() == 3;
    const bool own = function.own && !plain_ && (function.id != Function::InStr || searchFrom);
    const char* name = own ? function.own : function.plain;
    const bool cut = plain_ && (function.id == Function::Left || function.id == Function::Mid);
    if (cut) name = "substr";
    if (!name || (plain_ && searchFrom)) throw notForViews(function.name);
    out_ += name;
    out_ += "(";
    for (std::size_t i = 0; i < call.arguments.size(); ++i) {
        if (i > 0) out_ += ", ";
        if (cut && function.id == Function::Left && i == 1) out_ += "1, ";
        const bool isText = function.id == Function::InStr ? i + 2 >= call.arguments.size() : i == 0;
        if (isText) {
            text(*call.arguments[i]);
        } else {
            number(*call.arguments[i]);
        }
    }
    out_ += ")";
}

void Writer::aggregate(const Call& call) {
    out_ += call.function->plain;
    out_ += "(";
    if (call.star) {
        out_ += "*";
    } else if (call.function->id == Function::Sum || call.function->id == Function::Avg) {
        number(*call.arguments[0]);
    } else {
        value(*call.arguments[0], kOperandLevel);
        const bool extreme = call.function->id != Function::Count;
        if (extreme && kindOf(*call.arguments[0]) == Kind::Text) collate(spanish());
    }
    out_ += ")";
}

/// A part of a date, cut out of the file's form.
void Writer::datePart(const Call& call, int from, int length) {
    out_ += "CAST(substr(";
    date(*call.arguments[0]);
    out_ += ", " + QByteArray::number(from) + ", " + QByteArray::number(length) + ") AS INTEGER)";
}

/// One of the values that IIf and Nz choose from. Among values of several types a date goes as text, since
/// the result no longer tells that it is one.
void Writer::branch(const Expression& expression, Type common) {
    if (common == Type::Unknown && kindOf(expression) == Kind::Date) return text(expression);
    value(expression);
}

}  // namespace tarmel::access_sql
