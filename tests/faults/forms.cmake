# What becomes of the windows when somebody presses everything.
if(KVO_QT)
    kvo_fault_program(monkey app Qt6::Test)
    target_sources(monkey PRIVATE ${CMAKE_SOURCE_DIR}/tests/forms/support/test_program.cpp
        ${CMAKE_SOURCE_DIR}/tests/forms/support/model_run.cpp)
    kvo_fault_program(hostile_texts app Qt6::Test)
    target_sources(hostile_texts PRIVATE ${CMAKE_SOURCE_DIR}/tests/forms/support/test_program.cpp
        ${CMAKE_SOURCE_DIR}/tests/forms/support/model_run.cpp)
endif()
