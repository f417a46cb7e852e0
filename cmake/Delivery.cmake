# What an installed program lays its user's folder out from, and where it finds that: by the way from its own
# folder, so that the installed tree can be moved. The build tree has the same shape.
include(GNUInstallDirs)
file(RELATIVE_PATH SORVANTO_DATA_FROM_EXECUTABLE
     ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_DATADIR}/sorvanto)

file(RELATIVE_PATH SORVANTO_MANUAL_FROM_EXECUTABLE
     ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_DATADIR}/doc/sorvanto/manual)

file(GLOB SORVANTO_DELIVERED CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/languages/*Translation.xml)
list(APPEND SORVANTO_DELIVERED ${CMAKE_SOURCE_DIR}/languages/former.json ${CMAKE_SOURCE_DIR}/data/dbupdate.xml)
set(built ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${SORVANTO_DATA_FROM_EXECUTABLE})
file(MAKE_DIRECTORY ${built})
foreach(file ${SORVANTO_DELIVERED})
  cmake_path(GET file FILENAME name)
  file(CREATE_LINK ${file} ${built}/${name} SYMBOLIC)
endforeach()
set(manual ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${SORVANTO_MANUAL_FROM_EXECUTABLE})
cmake_path(GET manual PARENT_PATH docs)
file(MAKE_DIRECTORY ${docs})
file(CREATE_LINK ${CMAKE_SOURCE_DIR}/docs/manual ${manual} SYMBOLIC)
