-- Signing in, and what the administration of the program looks up.

-- Wrong passwords, so that guessing becomes slow at whichever station it happens. QUEM is a user's code, or a drawer that
-- names of nobody share: what was typed there may be a password in the wrong place and is not kept.
CREATE TABLE TEC_TENTATIVA (
  QUEM VARCHAR(20) NOT NULL,
  FALHAS INTEGER DEFAULT 0 NOT NULL,
  ULTIMA TIMESTAMP,
  CONSTRAINT TEC_TENTATIVA_PK PRIMARY KEY (QUEM)
);

-- The log is read newest first; a range of days is found in the same index.
DROP INDEX TEC_LOG_DATA;
CREATE DESCENDING INDEX TEC_LOG_RECENTE ON TEC_LOG (DATA_HORA, ID);
CREATE INDEX TEC_LOG_USUARIO ON TEC_LOG (USUARIO);
CREATE INDEX TEC_LOG_CHAVE ON TEC_LOG (CHAVE);

-- What a parameter means is known to the program, which checks the values against it.
ALTER TABLE TEC_PARAMETRO DROP DESCRICAO;
