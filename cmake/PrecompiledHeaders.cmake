# Qt's headers are most of what every file compiles. Each layer and each test program builds them
# once, as a precompiled header of the Qt modules it may use, instead of once per source file.
# VKTL_PCH=OFF builds without them (to check that every file includes what it uses).
option(VKTL_PCH "Precompile the Qt and standard headers" ON)

set(VKTL_PCH_Core <QtCore/QObject> <QtCore/QString> <QtCore/QVariant> <QtCore/QHash>
    <QtCore/QVector> <memory> <vector> <functional> <optional> <algorithm>)
set(VKTL_PCH_Gui ${VKTL_PCH_Core} <QtGui/QImage> <QtGui/QPainter> <QtGui/QFont>
    <QtGui/QColor> <QtGui/QFontMetrics>)
set(VKTL_PCH_Widgets ${VKTL_PCH_Gui} <QtWidgets/QWidget> <QtWidgets/QApplication>
    <QtWidgets/QScrollBar> <QtWidgets/QLabel>)

# vktl_precompile(target Core|Gui|Widgets [GTEST]): precompile that module's headers (and
# GoogleTest's) for the target's own files.
function(vktl_precompile target module)
  if(NOT VKTL_PCH)
    return()
  endif()
  set(headers ${VKTL_PCH_${module}})
  if("GTEST" IN_LIST ARGN)
    list(APPEND headers <gtest/gtest.h>)
  endif()
  target_precompile_headers(${target} PRIVATE ${headers})
endfunction()
