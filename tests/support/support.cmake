# What the in-process tests of the windows stand on; they are linked to one main() of their own,
# which makes the application object.
include_guard(GLOBAL)

add_library(kelvane_test_videos STATIC ${CMAKE_CURRENT_LIST_DIR}/Videos.cpp)
target_include_directories(kelvane_test_videos PUBLIC ${PROJECT_SOURCE_DIR}/tests)
target_link_libraries(kelvane_test_videos PUBLIC Qt6::Gui PRIVATE kelvane_options)

add_library(kelvane_test_support STATIC
  ${CMAKE_CURRENT_LIST_DIR}/AllocationFailure.cpp
  ${CMAKE_CURRENT_LIST_DIR}/DialogAnswers.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Events.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Main.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Pictures.cpp
  ${CMAKE_CURRENT_LIST_DIR}/PlayerWatch.cpp
  ${CMAKE_CURRENT_LIST_DIR}/RecordingTools.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ScreenReader.cpp
  ${CMAKE_CURRENT_LIST_DIR}/WindowText.cpp)
target_include_directories(kelvane_test_support PUBLIC ${PROJECT_SOURCE_DIR}/tests)
target_link_libraries(kelvane_test_support
  PUBLIC kelvane_test_videos kelvane_platform kelvane_shared GTest::gtest
  PRIVATE kelvane_options)
target_compile_definitions(kelvane_test_support
  PRIVATE KELVANE_WINDOW_TEXTS="${PROJECT_SOURCE_DIR}/tests/windows")
