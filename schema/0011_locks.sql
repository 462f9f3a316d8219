-- What stations hold to take turns on a record. A record's own row will not do: an order is stored by deleting it and
-- inserting it anew, and who looks between the two finds nothing to hold. These rows never change and never go. Each
-- stands for all records whose keys fall to it; two that share one wait for each other, which befalls one pair in a
-- thousand and lasts as long as one action.
CREATE TABLE TEC_TRAVA (
  NUMERO INTEGER NOT NULL,
  CONSTRAINT TEC_TRAVA_PK PRIMARY KEY (NUMERO)
);
