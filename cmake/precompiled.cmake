# Headers that most files of a target share, parsed once. For a build from nothing that is not repeated (CI); off
# otherwise, since a compiler cache knows such a build only by halves.
option(TECELAGEM_PCH "Parse shared headers once per library" OFF)

function(share_headers target)
  if(TECELAGEM_PCH)
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()

# The same for programs of one kind, compiled with the same flags: the first of them parses for all.
function(share_headers_among group target)
  get_property(first GLOBAL PROPERTY first_of_${group})
  if(NOT TECELAGEM_PCH)
    return()
  elseif(first)
    target_precompile_headers(${target} REUSE_FROM ${first})
  else()
    target_precompile_headers(${target} PRIVATE ${ARGN})
    set_property(GLOBAL PROPERTY first_of_${group} ${target})
  endif()
endfunction()

set(STANDARD_HEADERS <algorithm> <functional> <map> <memory> <optional> <stdexcept> <string> <string_view> <utility>
  <vector>)
set(PAPER_HEADERS <QByteArray> <QFont> <QImage> <QJSEngine> <QJSValue> <QPainter> <QString>)
set(WINDOW_HEADERS <QApplication> <QDialog> <QHBoxLayout> <QLabel> <QLineEdit> <QMessageBox> <QPainter> <QPointer>
  <QPushButton> <QString> <QTableView> <QTimer> <QVBoxLayout> <QWidget>)
