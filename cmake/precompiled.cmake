# Headers that most files of a target share, parsed once. For a build from nothing that is not repeated (CI); off
# otherwise, since a compiler cache knows such a build only by halves.
option(TECELAGEM_PCH "Parse shared headers once per library" OFF)

function(share_headers target)
  if(TECELAGEM_PCH)
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()

# The headers that `other` shares; both are compiled with the same flags.
function(share_headers_of target other)
  if(TECELAGEM_PCH)
    target_precompile_headers(${target} REUSE_FROM ${other})
  endif()
endfunction()

set(STANDARD_HEADERS <algorithm> <functional> <map> <memory> <optional> <stdexcept> <string> <string_view> <utility>
  <vector>)
set(WINDOW_HEADERS <QApplication> <QDialog> <QHBoxLayout> <QLabel> <QLineEdit> <QMessageBox> <QPainter> <QPointer>
  <QPushButton> <QString> <QTableView> <QTimer> <QVBoxLayout> <QWidget>)
