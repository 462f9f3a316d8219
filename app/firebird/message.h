// Rows and parameters as the client library moves them: one buffer, described by its columns.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "app/firebird/engine.h"
#include "host/value.h"

namespace app::firebird {

struct Column {
  std::string name;  // as the engine returns it
  unsigned type = 0;
  int subtype = 0;
  unsigned length = 0;  // bytes, of text on the connection's character set
  int scale = 0;        // 0 or negative
  unsigned charset = 0;
  unsigned offset = 0;
  unsigned null_offset = 0;
  bool fixed_width = false;  // CHAR: comes with trailing blanks
};

/// A described buffer.
class Layout {
 public:
  Layout() = default;
  /// Columns as `metadata` has them.
  Layout(Status& status, Ref<api::IMessageMetadata> metadata);

  api::IMessageMetadata* Metadata() const { return metadata_.Get(); }
  const std::vector<Column>& Columns() const { return columns_; }
  /// Bytes of the buffer.
  unsigned Size() const { return size_; }

 private:
  Ref<api::IMessageMetadata> metadata_;
  std::vector<Column> columns_;
  unsigned size_ = 0;
};

/// The buffer in which a statement's rows are wanted: as the engine offers it, texts as varying ones in WIN1252.
Layout OutputLayout(Status& status, api::IMessageMetadata& offered);

/// Text of the blob with this id.
using BlobReader = std::function<std::string(ISC_QUAD id, const Column& column)>;
/// Stores a text as a blob and hands back its id.
using BlobWriter = std::function<ISC_QUAD(const std::string& text, const Column& column)>;

/// The value of one column of a row.
host::Value ReadValue(const Column& column, const unsigned char* row, const BlobReader& blob);

/// How long a text buffer the parameter needs to take the value: 0 where the value goes in the parameter's own type.
/// Text goes as text wherever the engine can convert it, so that its own rules for dates and numbers hold.
unsigned TextLengthFor(const Column& parameter, const host::Value& value);

/// The buffer for parameters of these types, those with a text length as varying text.
Layout InputLayout(Status& status, api::IMessageMetadata& parameters, const std::vector<unsigned>& text_lengths);

/// Writes a value into one parameter of a message made by InputLayout.
void WriteValue(const Column& target, const host::Value& value, unsigned char* row, const BlobWriter& blob);

/// `digits` divided by 10 to the `scale`: the same number as its decimal text read.
double Unscale(std::int64_t digits, int scale);

}  // namespace app::firebird
