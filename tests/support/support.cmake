# The libraries that the tests share. kelvane_test_support has a main() for the tests of windows; it
# makes the application object.
include_guard(GLOBAL)
find_package(Qt6 REQUIRED COMPONENTS Test)

# For tests without windows.
add_library(kelvane_test_kit STATIC
  ${CMAKE_CURRENT_LIST_DIR}/Gate.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Process.cpp)
target_include_directories(kelvane_test_kit
  PUBLIC ${PROJECT_SOURCE_DIR}/tests ${PROJECT_SOURCE_DIR}/src)
target_link_libraries(kelvane_test_kit PUBLIC Qt6::Core PRIVATE kelvane_options)

add_library(kelvane_test_videos STATIC
  ${CMAKE_CURRENT_LIST_DIR}/Pictures.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Videos.cpp)
target_link_libraries(kelvane_test_videos
  PUBLIC kelvane_test_kit Qt6::Widgets
  PRIVATE kelvane_options)

add_library(kelvane_test_support STATIC
  ${CMAKE_CURRENT_LIST_DIR}/AllocationFailure.cpp
  ${CMAKE_CURRENT_LIST_DIR}/DialogAnswers.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Events.cpp
  ${CMAKE_CURRENT_LIST_DIR}/FileDrag.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Main.cpp
  ${CMAKE_CURRENT_LIST_DIR}/PlayerWatch.cpp
  ${CMAKE_CURRENT_LIST_DIR}/RecordingTools.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ScreenReader.cpp
  ${CMAKE_CURRENT_LIST_DIR}/TabOrder.cpp
  ${CMAKE_CURRENT_LIST_DIR}/WindowText.cpp)
target_link_libraries(kelvane_test_support
  PUBLIC kelvane_test_videos kelvane_platform kelvane_shared GTest::gtest Qt6::Test
  PRIVATE kelvane_options)
target_compile_definitions(kelvane_test_support
  PRIVATE KELVANE_WINDOW_TEXTS="${PROJECT_SOURCE_DIR}/tests/windows")

# The buses and services of a desktop session.
find_package(Qt6 6.4 REQUIRED COMPONENTS DBus)
add_library(kelvane_test_session STATIC
  ${CMAKE_CURRENT_LIST_DIR}/PrivateBus.cpp
  ${CMAKE_CURRENT_LIST_DIR}/SessionServices.cpp)
target_link_libraries(kelvane_test_session
  PUBLIC kelvane_test_kit Qt6::DBus
  PRIVATE kelvane_options)
