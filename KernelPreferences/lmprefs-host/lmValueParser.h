#pragma once

#include <QString>

#include <boost/any.hpp>

// Values as a person types them on the command line ("--set KEY=VALUE"):
// numbers and bools as plain text ("45", "0.1", "nan", "true"), strings as
// they are, colours and lists as JSON ("[0.5, 0.5, 1]", "[\"a\", \"b\"]").
namespace lmValueParser {

// Reads text as a value of the same type as like; false with the reason.
bool parse(const QString &text, const boost::any &like, boost::any &out, QString *error);

// Reads text as the type its JSON form shows: true or false, or a non-empty
// list of strings, of numbers (floats) or of [r, g, b] colours. For a key
// that a category reads but that holds no value yet to take the type from.
bool parseUntyped(const QString &text, boost::any &out, QString *error);

// The value in the same syntax; parse() reads it back to the same value.
QString text(const boost::any &value);

} // namespace lmValueParser
