# Unity batches: several sources compiled as one, so that Qt's headers are read once for all of them.
# Helpers of one target therefore need different names, also in unnamed namespaces. The preset `alone`
# leaves batches out, which shows that every source includes what it uses.
set(CMAKE_UNITY_BUILD ${KELO_UNITY})
# Larger batches save little more, and a change of one source then costs more.
set(CMAKE_UNITY_BUILD_BATCH_SIZE 8)
