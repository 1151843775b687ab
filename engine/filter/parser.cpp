// One function per level of the grammar, from the loosest operators to the tightest:
//
//   or          and { "||" and }
//   and         comparison { "&&" comparison }
//   comparison  sum [ ("==" | "!=" | "<" | "<=" | ">" | ">=") sum ]
//   sum         product { ("+" | "-") product }
//   product     unary { ("*" | "/" | "%") unary }
//   unary       { "-" | "+" | "!" } primary
//   primary     NUMBER | NAME [ "[" NUMBER "]" ] [ ":" NAME ] | "(" or ")"
#include "engine/filter/filter.h"
#include "engine/filter/lexer.h"

#include <algorithm>

namespace tarvo::engine::filter {

namespace {

using NodePointer = std::shared_ptr<const Node>;

bool isComparison(Operator operation) {
    return operation >= Operator::Equal && operation <= Operator::GreaterEqual;
}

class Parser {
public:
    explicit Parser(std::string_view text) : m_text(text), m_lexer(text) { advance(); }

    bool atEnd() const { return m_token.kind == Token::Kind::End; }

    NodePointer all() {
        NodePointer root = disjunction();
        if (!atEnd())
            expected("an operator");
        return root;
    }

private:
    void advance() { m_token = m_lexer.next(); }

    bool isOperation(Operator operation) const {
        return m_token.kind == Token::Kind::Operation && m_token.operation == operation;
    }

    [[noreturn]] void expected(const std::string& what) const {
        failAt(m_text, m_token.offset,
               "Expected " + what + " at position %0, found " +
                   (atEnd() ? "the end" : "\"" + std::string(m_token.text.substr(0, 60)) + "\"") +
                   ".");
    }

    NodePointer make(Operator operation, std::size_t offset, std::vector<NodePointer> operands,
                     std::vector<Operator> between = {}) {
        auto node = std::make_shared<Node>();
        node->kind = Node::Kind::Operation;
        node->operation = operation;
        node->offset = offset;
        for (const NodePointer& operand : operands)
            node->height = std::max(node->height, operand->height + 1);
        if (node->height > maximumHeight)
            tooDeep(offset);
        node->operands = std::move(operands);
        node->between = std::move(between);
        return node;
    }

    [[noreturn]] void tooDeep(std::size_t offset) const {
        failAt(m_text, offset,
               "The expression is nested too deeply at position %0: at most " +
                   std::to_string(maximumHeight) + " levels are possible.");
    }

    // Operands with operators of one rank between them stay flat, however many they are.
    template <typename Operand>
    NodePointer list(Operator operation, std::initializer_list<Operator> ofThisRank,
                     Operand operand) {
        const std::size_t offset = m_token.offset;
        NodePointer first = operand();
        std::vector<NodePointer> operands{std::move(first)};
        std::vector<Operator> between;
        while (std::any_of(ofThisRank.begin(), ofThisRank.end(),
                           [this](Operator one) { return isOperation(one); })) {
            between.push_back(m_token.operation);
            advance();
            operands.push_back(operand());
        }
        if (between.empty())
            return operands.front();
        return make(operation, offset, std::move(operands), std::move(between));
    }

    NodePointer disjunction() {
        return list(Operator::Or, {Operator::Or}, [this] { return conjunction(); });
    }

    NodePointer conjunction() {
        return list(Operator::And, {Operator::And}, [this] { return comparison(); });
    }

    NodePointer comparison() {
        const std::size_t offset = m_token.offset;
        NodePointer left = sum();
        if (m_token.kind != Token::Kind::Operation || !isComparison(m_token.operation))
            return left;
        const Operator operation = m_token.operation;
        advance();
        NodePointer result = make(operation, offset, {std::move(left), sum()});
        // 1 < a < 5 would compare 0 or 1 with 5: never what is meant.
        if (m_token.kind == Token::Kind::Operation && isComparison(m_token.operation))
            failAt(m_text, m_token.offset,
                   "Found a second comparison at position %0: join comparisons with \"&&\", as in "
                   "\"1 < a && a < 5\".");
        return result;
    }

    NodePointer sum() {
        return list(Operator::Add, {Operator::Add, Operator::Subtract},
                    [this] { return product(); });
    }

    NodePointer product() {
        return list(Operator::Multiply, {Operator::Multiply, Operator::Divide, Operator::Modulo},
                    [this] { return unary(); });
    }

    NodePointer unary() {
        const std::size_t offset = m_token.offset;
        Operator operation;
        if (isOperation(Operator::Subtract))
            operation = Operator::Negate;
        else if (isOperation(Operator::Add))
            operation = Operator::Plus;
        else if (isOperation(Operator::Not))
            operation = Operator::Not;
        else
            return primary();
        const Nesting nesting(*this);
        advance();
        return make(operation, offset, {unary()});
    }

    NodePointer primary() {
        switch (m_token.kind) {
            case Token::Kind::Number: {
                auto node = std::make_shared<Node>();
                node->offset = m_token.offset;
                node->number = m_token.number;
                advance();
                return node;
            }
            case Token::Kind::Name:
                return element();
            case Token::Kind::LeftParenthesis: {
                const Nesting nesting(*this);
                advance();
                NodePointer inner = disjunction();
                if (m_token.kind != Token::Kind::RightParenthesis)
                    expected("an operator or \")\"");
                advance();
                return inner;
            }
            default:
                expected("a number, a name or \"(\"");
        }
    }

    NodePointer element() {
        auto node = std::make_shared<Node>();
        node->kind = Node::Kind::Element;
        node->offset = m_token.offset;
        node->name = m_token.text;
        advance();
        if (m_token.kind == Token::Kind::LeftBracket) {
            advance();
            if (m_token.kind != Token::Kind::Number || !m_token.number.whole)
                expected("the whole number of an element");
            node->index = m_token.text;
            node->indexOffset = m_token.offset;
            node->element = static_cast<std::int64_t>(
                std::min<schema::Grid::Wide>(m_token.number.integer, INT64_MAX));
            advance();
            if (m_token.kind != Token::Kind::RightBracket)
                expected("\"]\"");
            advance();
        }
        if (m_token.kind == Token::Kind::Colon) {
            advance();
            static constexpr std::pair<std::string_view, Property> properties[] = {
                {"minimum", Property::Minimum},
                {"maximum", Property::Maximum},
                {"default", Property::Default},
                {"invalid", Property::Invalid}};
            if (m_token.kind == Token::Kind::Name)
                for (const auto& [name, property] : properties)
                    if (m_token.text == name)
                        node->property = property;
            if (node->property == Property::None)
                expected("\"minimum\", \"maximum\", \"default\" or \"invalid\"");
            advance();
        }
        return node;
    }

    // Counts what recursion is open, before a tree exists that could be measured.
    struct Nesting {
        explicit Nesting(Parser& owner) : parser(owner) {
            if (++parser.m_nesting > maximumHeight)
                parser.tooDeep(parser.m_token.offset);
        }
        ~Nesting() { --parser.m_nesting; }
        Parser& parser;
    };

    std::string_view m_text;
    Lexer m_lexer;
    Token m_token;
    unsigned m_nesting = 0;
};

}  // namespace

Expression Expression::parse(std::string_view text) {
    if (text.size() > maximumTextLength)
        throw Failure(ErrorCode::Filter, "The filter is too long: it has " +
                                             std::to_string(text.size()) + " bytes, at most " +
                                             std::to_string(maximumTextLength) + " are possible.");
    Expression expression;
    expression.m_text = text;
    Parser parser(expression.m_text);
    if (!parser.atEnd())
        expression.m_root = parser.all();
    return expression;
}

}  // namespace tarvo::engine::filter
