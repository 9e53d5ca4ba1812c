#include "platform/ado/Recordset.h"

#include <algorithm>
#include <optional>

#include "platform/ado/Engine.h"
#include "platform/ado/Errors.h"
#include "platform/ado/RowBuffer.h"

namespace tarmel::ado {

using access_sql::Translation;
using basic::RuntimeError;
using basic::Variant;

namespace {

/// Rows read at once on opening. Most results are shorter and leave no live reader behind.
constexpr std::size_t kFirstRows = 24;

}  // namespace

struct Recordset::State final : detail::Reader {
    State(std::shared_ptr<detail::Engine> from, QString text, detail::Parameters values, Cursor kind)
        : engine(std::move(from)), sql(std::move(text)), parameters(std::move(values)), cursor(kind) {}
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State() override { letGo(); }

    /// False for a command.
    bool run() {
        detail::Lease fresh = engine->bound(sql, parameters);
        if (fresh.shape().translation.kind != Translation::Kind::Select) {
            affected = engine->carryOut(fresh);
            return false;
        }
        columns = fresh.shape().columns;
        lease = std::move(fresh);
        engine->enter(this);
        have(kFirstRows - 1);
        return true;
    }

    /// Reads on until the row stands in the buffer; false when the rows end before it.
    bool have(std::size_t row) {
        while (rows.size() <= row && lease)
            readOne();
        if (rows.size() > row) return true;
        if (trouble) throw RuntimeError(*trouble);
        return false;
    }

    /// A failure ends the reading; whoever asks for a row behind it meets it.
    void readOne() noexcept {
        try {
            if (engine->next(lease)) {
                rows.append(lease.statement());
                return;
            }
        } catch (const RuntimeError& error) {
            trouble = error;
        }
        letGo();
    }

    void letGo() {
        if (!lease) return;
        lease.release();
        engine->leave(this);
    }

    void drain() noexcept override {
        while (lease)
            readOne();
    }

    std::shared_ptr<detail::Engine> engine;
    QString sql;
    detail::Parameters parameters;
    Cursor cursor;
    detail::Lease lease;
    std::shared_ptr<const detail::Columns> columns;
    detail::RowBuffer rows;
    std::size_t position = 0;
    int affected = 0;
    std::optional<RuntimeError> trouble;
    std::vector<FieldInfo> fields;
};

Recordset::Recordset() = default;
Recordset::~Recordset() = default;
Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;

void Recordset::Open(const QString& sql, Connection& connection, Cursor cursor, Lock, int,
                     const std::vector<Variant>& parameters) {
    state_.reset();
    if (!connection.engine_) throw detail::connectionClosed();
    auto state = std::make_unique<State>(connection.engine_, sql, parameters, cursor);
    const bool hasRows = state->run();
    affected_ = state->affected;
    if (hasRows) state_ = std::move(state);
}

void Recordset::Requery() {
    if (!state_) throw detail::recordsetClosed();
    if (!state_->engine->isOpen()) throw detail::connectionClosed();
    auto fresh = std::make_unique<State>(state_->engine, state_->sql, state_->parameters, state_->cursor);
    state_->letGo();
    if (fresh->run()) state_ = std::move(fresh);
}

void Recordset::Close() {
    if (!state_) throw detail::recordsetClosed();
    state_.reset();
}

bool Recordset::IsOpen() const {
    return state_ != nullptr;
}

bool Recordset::Eof() const {
    if (!state_) throw detail::recordsetClosed();
    return !state_->have(state_->position);
}

bool Recordset::Bof() const {
    if (!state_) throw detail::recordsetClosed();
    return !state_->have(0);
}

void Recordset::MoveFirst() {
    if (!state_) throw detail::recordsetClosed();
    if (!state_->have(0)) throw detail::noCurrentRow();
    state_->position = 0;
}

void Recordset::MoveNext() {
    if (!state_) throw detail::recordsetClosed();
    if (!state_->have(state_->position)) throw detail::noCurrentRow();
    ++state_->position;
}

bool Recordset::Seek(int row) {
    if (!state_) throw detail::recordsetClosed();
    const auto wanted = static_cast<std::size_t>(std::max(row, 0));
    const bool found = state_->have(wanted);
    state_->position = found ? wanted : state_->rows.size();
    return found;
}

int Recordset::RecordCount() const {
    if (!state_) throw detail::recordsetClosed();
    if (state_->cursor != Cursor::Keyset && state_->cursor != Cursor::Static) return -1;
    state_->have(SIZE_MAX - 1);
    return static_cast<int>(state_->rows.size());
}

int Recordset::FieldCount() const {
    if (!state_) throw detail::recordsetClosed();
    return static_cast<int>(state_->columns->all().size());
}

const Recordset::FieldInfo& Recordset::FieldAt(int index) const {
    if (index < 0 || index >= FieldCount()) throw detail::noSuchField(QString::number(index));
    if (state_->fields.empty()) {
        for (const auto& c : state_->columns->all())
            state_->fields.push_back({c.name, c.table, c.type});
    }
    return state_->fields[static_cast<std::size_t>(index)];
}

int Recordset::FieldIndex(const QString& name) const {
    if (!state_) throw detail::recordsetClosed();
    const int index = state_->columns->indexOf(name);
    if (index < 0) throw detail::noSuchField(name);
    return index;
}

Variant Recordset::Value(const QString& name) const {
    return Value(FieldIndex(name));
}

Variant Recordset::Value(int index) const {
    if (index < 0 || index >= FieldCount()) throw detail::noSuchField(QString::number(index));
    if (!state_->have(state_->position)) throw detail::noCurrentRow();
    return state_->rows.value(state_->position, index,
                              state_->columns->all()[static_cast<std::size_t>(index)].type);
}

}  // namespace tarmel::ado
