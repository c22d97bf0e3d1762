kvo_fault_program(no_memory graph library)
kvo_fault_program(every_byte library link)
target_sources(every_byte PRIVATE ${CMAKE_SOURCE_DIR}/tests/fuzz/lookers.cpp)
